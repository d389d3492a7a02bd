// The analyser's mathematics once more, in double precision and as plainly as possible: what the
// tests compare against.
#pragma once

#include <cstdint>
#include <vector>

namespace krv::test {

struct ReferenceSpectrum {
  std::vector<double> db;       // per output bin, before the blur; -150 or more
  std::vector<uint8_t> pixels;  // per output bin, after the blur
  double level;
};

// `samples` are interleaved; their number is a multiple of `channels`.
ReferenceSpectrum AnalyseByDefinition(const std::vector<int16_t>& samples, int channels);

}  // namespace krv::test
