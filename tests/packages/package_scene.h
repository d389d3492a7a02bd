// A picture, a person in it and a sound to render packages over, the same on every machine.
#pragma once

#include <cstdint>
#include <vector>

#include "effect_session.h"
#include "media/picture.h"

namespace krv::test {

// A dark picture whose left and right are alike, a person in its middle, and one frame of a full,
// falling spectrum at 25 frames per second.
class PackageScene final : public PersonMaskSource {
 public:
  PackageScene(int width, int height);

  // The input of the frames. The person stays where it was.
  host::Picture& picture() { return picture_; }

  // The frame one second after the effect's begin, with the session's parameters. Throws the
  // plug-in's reason when it fails.
  host::Picture Render(host::EffectSession* session);

  uint8_t GetMask(uint8_t** pixels, int32_t* width, int32_t* height, int32_t* stride) override;

 private:
  host::Picture picture_;
  host::Picture mask_;
  std::vector<int16_t> sound_;
};

}  // namespace krv::test
