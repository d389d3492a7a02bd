#include "keyframes/mixing.h"

#include <cmath>
#include <initializer_list>

namespace krv::tool {

double ShareOfNext(Way way, double part) {
  switch (way) {
    case Way::kHold:
      return part < 1 ? 0 : 1;
    case Way::kSmooth:
      return part * part * (3 - 2 * part);
    default:
      return part;
  }
}

double MixNumbers(double from, double to, double share) {
  return share == 1 ? to : from + (to - from) * share;
}

uint32_t MixColours(uint32_t from, uint32_t to, double share) {
  uint32_t mixed = 0;
  for (const int shift : {16, 8, 0}) {
    const double channel = MixNumbers((from >> shift) & 255, (to >> shift) & 255, share);
    mixed |= static_cast<uint32_t>(std::lround(channel)) << shift;
  }
  return mixed;
}

}  // namespace krv::tool
