// Pictures for tests of effects.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <memory>
#include <ostream>
#include <vector>

#include "frame.h"

namespace krv::test {

// A pixel of eight bits per channel, in the order in which colours are written.
struct Rgba {
  int red;
  int green;
  int blue;
  int alpha;
  friend bool operator==(const Rgba&, const Rgba&) = default;
};
std::ostream& operator<<(std::ostream& out, const Rgba& color);

// Whether no channel differs by more than `tolerance`.
bool IsNear(const Rgba& a, const Rgba& b, int tolerance = 1);

// The pixels of 8-bit frames in memory.
Rgba PixelAt(host::MemoryFrame& frame, int32_t x, int32_t y);
void Fill(host::MemoryFrame& frame, const Rgba& color);

// A pixel of a float frame: red, green, blue, alpha.
using Values = std::array<float, 4>;
Values ValuesAt(host::MemoryFrame& frame, int32_t x, int32_t y);
void FillValues(host::MemoryFrame& frame, const Values& values);

// Every byte of a frame in memory, padding included.
std::vector<uint8_t> BytesOf(host::MemoryFrame& frame);
void FillBytes(host::MemoryFrame& frame, uint8_t byte);

// A picture in which no two pixels near each other are alike.
void FillWithPattern(host::MemoryFrame& frame);

// A texture that holds a frame's picture, and a frame in memory that holds a texture's.
std::unique_ptr<host::TextureFrame> TextureOf(host::MemoryFrame& frame);
std::unique_ptr<host::MemoryFrame> MemoryOf(host::TextureFrame& frame);

// Whether two 8-bit frames differ nowhere by more than `tolerance`; says where they do first.
testing::AssertionResult SamePictures(host::MemoryFrame& result, host::MemoryFrame& reference,
                                      int tolerance = 1);

}  // namespace krv::test
