// The picture, sound and person that packages are tried on.
#pragma once

#include <cstdint>
#include <vector>

#include "effect_session.h"

namespace krv::tool {

// One frame of 320 x 180 pixels at 25 frames per second: a colour gradient, a chord in stereo at
// 48 kHz, and a person in the middle third.
class CheckScene final : public PersonMaskSource {
 public:
  CheckScene();

  // Valid as long as the scene.
  host::FrameRequest request() const;

  uint8_t GetMask(uint8_t** pixels, int32_t* width, int32_t* height, int32_t* stride) override;

 private:
  std::vector<uint8_t> picture_;
  std::vector<uint8_t> mask_;
  std::vector<int16_t> sound_;
};

}  // namespace krv::tool
