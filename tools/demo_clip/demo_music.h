// A short piece of synthesised music.
#pragma once

#include <cstdint>
#include <vector>

namespace krv::demo {

inline constexpr double kBeat = 0.5;        // seconds
inline constexpr double kMusicLength = 12;  // seconds: six bars

// Interleaved stereo, kMusicLength long: chords and an arpeggio, then drums and bass, then a last
// chord that rings out. The same samples on every machine, up to rounding.
std::vector<int16_t> MakeMusic(int sample_rate);

}  // namespace krv::demo
