// A picture and a sound to render packages over, the same on every machine.
#pragma once

#include <cstdint>
#include <vector>

#include "effect_session.h"
#include "media/picture.h"

namespace krv::test {

// A dark picture with a light corner, and one frame of a full, falling spectrum at 25 frames per
// second. The effect is one second old.
class PackageScene {
 public:
  PackageScene(int width, int height);

  // Renders one frame with the session's parameters. A failure fails the test and gives an empty
  // picture.
  host::Picture Render(host::EffectSession* session) const;

 private:
  host::Picture picture_;
  std::vector<int16_t> sound_;
};

}  // namespace krv::test
