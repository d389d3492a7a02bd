// What lies between two values. Pure functions, for any thread.
#pragma once

#include <cstdint>

namespace krv::tool {

// How a value goes from one key to the next.
enum class Way {
  kLinear,  // evenly
  kHold,    // stays, and changes at the next key
  kSmooth,  // starts and ends at rest
};

// How much of the next value counts when `part` of the time to it is over; both 0 to 1. Linear: x,
// hold: 0 until part is 1, smooth: 3 x^2 - 2 x^3 ("smoothstep").
double ShareOfNext(Way way, double part);

// from + (to - from) * share, and exactly `from` and `to` for a share of 0 and 1.
double MixNumbers(double from, double to, double share);

// Colours 0xRRGGBB, each channel by itself and rounded.
uint32_t MixColours(uint32_t from, uint32_t to, double share);

}  // namespace krv::tool
