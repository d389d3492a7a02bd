// What the host tells an effect about one frame.
#pragma once

#include "interfaces.h"
#include "recorder.h"

namespace abi {

// The samples of one frame, and how often each fact about them was asked for.
class Sound final : public AudioBlock {
 public:
  static constexpr uint32_t kChannels = 2;
  static constexpr int32_t kSampleFrames = 1920;
  int16_t samples[kChannels * kSampleFrames] = {};
  int rate_requests = 0;
  int start_requests = 0;

  // The same noise every time, of this amplitude.
  void FillWithNoise(int32_t amplitude);

  uint32_t GetChannelCount() override { return kChannels; }
  int32_t GetSampleFrames() override { return kSampleFrames; }
  int32_t GetSampleRate() override;
  int64_t GetStartSample() override;
  const int16_t* GetSamples() override { return samples; }
};

struct ServedValue {
  const char* name;
  ParameterValue value;
};

class FrameContext final : public EffectContext {
 public:
  int64_t index = 0;
  int64_t rate_numerator = 25;
  int64_t rate_denominator = 1;
  HostFrame* output = nullptr;
  HostFrame* input = nullptr;
  AudioBlock* audio = nullptr;
  // What is answered; parameters of other names are refused.
  const ServedValue* values = nullptr;
  int value_count = 0;

  // Parameters asked for, `name at position: ` and the value as it arrived.
  Recorder asked;
  // Requests for further inputs.
  Recorder requests;

  int64_t GetFrameIndex() override { return index; }
  void GetFrameRate(int64_t* numerator, int64_t* denominator) override;
  HostFrame* GetOutputFrame() override { return output; }
  HostFrame* GetInputFrame() override { return input; }
  AudioBlock* GetAudioBlock() override { return audio; }
  int32_t GetParameterValue(const char* name, int64_t position, ParameterValue* value) override;
  int32_t QueryProperty(const char*, int32_t, void*, uint32_t) override { return kNothingToDo; }
  void RequestExtraInput(uint32_t value) override;
};

}  // namespace abi
