// The packages we ship, for tests that change them, and a sound to show them with.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "audio_block.h"
#include "effects/effect_host.h"

namespace krv::test {

// The names of their folders, sorted.
std::vector<std::string> ShippedPackageNames();

// The package in that folder, with a number behind its unique name that no other call gives.
Package ShippedPackage(const std::string& folder);

// One frame of sound whose spectrum falls from loud lows to quiet highs.
struct FallingNoise {
  FallingNoise();

  std::vector<int16_t> samples;
  host::BorrowedAudioBlock block;
};

}  // namespace krv::test
