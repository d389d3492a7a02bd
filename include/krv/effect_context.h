// EffectContext: what the host tells an effect instance about the frame to process.
#pragma once

#include <cstdint>

#include "krv/frame.h"
#include "krv/types.h"

namespace krv {

// The audio samples that belong to one frame. The plug-in reads slots 0 to 4 in this order.
class AudioBlock {
 public:
  // Slot 0. Only the low 8 bits count; 0 means no audio.
  virtual uint32_t GetChannelCount() = 0;
  // Slot 1. Samples per channel; fewer than 2 means no audio.
  virtual int32_t GetSampleFrames() = 0;
  // Slot 2. Hz.
  virtual int32_t GetSampleRate() = 0;
  // Slot 3. Position of the first sample on the timeline, in samples per channel.
  virtual int64_t GetStartSample() = 0;
  // Slot 4. Interleaved, sample frames x channels values; null means no audio.
  virtual const int16_t* GetSamples() = 0;

 protected:
  ~AudioBlock() = default;
};

// Answers EffectContext::QueryProperty("ObjectAiDataTransferPtr").
class PersonMaskSource {
 public:
  // Slot 0. 1 when filled: four 8-bit channels a pixel, the fourth above 5 where the person is, top
  // row first. The pixels stay valid and unchanged until the frame has been processed.
  virtual uint8_t GetMask(uint8_t** pixels, int32_t* width, int32_t* height, int32_t* stride) = 0;

 protected:
  ~PersonMaskSource() = default;
};

inline constexpr char kPersonMaskProperty[] = "ObjectAiDataTransferPtr";
inline constexpr int32_t kPropertyPointer = 9;

// One per call, or one for all calls on an instance. All operations are called on the thread that
// called the instance. The frames belong to the host and stay valid until the call returns.
class EffectContext {
 public:
  // Slot 0. The frame's index, which is also the position parameters are asked for at. May be
  // negative.
  virtual int64_t GetFrameIndex() = 0;
  // Slot 1. Frames per second as a ratio. A denominator of 0, or a whole quotient of 0 or below,
  // counts as one frame per second.
  virtual void GetFrameRate(int64_t* numerator, int64_t* denominator) = 0;
  // Slot 2. The frame to write, or null.
  virtual HostFrame* GetOutputFrame() = 0;
  // Slot 3. The frame to draw over, or null. May be the output frame itself.
  virtual HostFrame* GetInputFrame() = 0;
  // Slot 4. The frame's audio, or null for silence. Valid until the next frame.
  virtual AudioBlock* GetAudioBlock() = 0;
  // Slot 5. *value arrives holding the declared default; the host overwrites it and returns 0, or
  // returns another code and leaves it alone. A text stays valid until the next call.
  virtual int32_t GetParameterValue(const char* name, int64_t position, ParameterValue* value) = 0;
  // Slot 6. Fills the `size` bytes at `result` and returns 0, or returns another code. Asked for:
  // kPersonMaskProperty with kPropertyPointer and 8 bytes, a PersonMaskSource* or null.
  virtual int32_t QueryProperty(const char* name, int32_t type, void* result, uint32_t size) = 0;
  // Slot 7. Told during slot 1 of an instance that wants a mask, with the value 1.
  virtual void RequestExtraInput(uint32_t value) = 0;

 protected:
  ~EffectContext() = default;
};

}  // namespace krv
