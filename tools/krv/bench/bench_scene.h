// The picture, the person and the sound that frames are measured with: the same in every run.
#pragma once

#include <cstdint>
#include <vector>

#include "audio_block.h"
#include "bench/bench_options.h"
#include "krv/effect_context.h"
#include "media/picture.h"

namespace krv::tool {

// Frames at 30 a second with sound in stereo at 48 kHz: a beat, chords and noise, a second of them
// again and again.
class BenchScene final : public PersonMaskSource {
 public:
  static constexpr int kFrameRate = 30;

  explicit BenchScene(FrameSize size);

  // Opaque, and nowhere of one colour.
  const host::Picture& picture() const { return picture_; }

  // The sound of a frame, valid as long as the scene.
  host::FrameAudio Audio(int64_t frame) const;

  uint8_t GetMask(uint8_t** pixels, int32_t* width, int32_t* height, int32_t* stride) override;

 private:
  host::Picture picture_;
  host::Picture mask_;
  std::vector<int16_t> sound_;
};

}  // namespace krv::tool
