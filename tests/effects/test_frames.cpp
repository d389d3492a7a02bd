#include "effects/test_frames.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>

namespace krv::test {
namespace {

FrameDescription Describe(HostFrame& frame) {
  FrameDescription description{};
  frame.Describe(&description);
  return description;
}

uint8_t* Row(host::MemoryFrame& frame, int32_t y) {
  return static_cast<uint8_t*>(frame.GetPixels()) +
         static_cast<ptrdiff_t>(y) * Describe(frame).stride;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Rgba& color) {
  return out << '(' << color.red << ' ' << color.green << ' ' << color.blue << ' ' << color.alpha
             << ')';
}

bool IsNear(const Rgba& a, const Rgba& b, int tolerance) {
  return std::max({std::abs(a.red - b.red), std::abs(a.green - b.green), std::abs(a.blue - b.blue),
                   std::abs(a.alpha - b.alpha)}) <= tolerance;
}

Rgba PixelAt(host::MemoryFrame& frame, int32_t x, int32_t y) {
  const uint8_t* pixel = Row(frame, y) + x * 4;
  return {pixel[2], pixel[1], pixel[0], pixel[3]};
}

void Fill(host::MemoryFrame& frame, const Rgba& color) {
  const FrameDescription description = Describe(frame);
  const uint8_t bytes[] = {static_cast<uint8_t>(color.blue), static_cast<uint8_t>(color.green),
                           static_cast<uint8_t>(color.red), static_cast<uint8_t>(color.alpha)};
  for (int32_t y = 0; y < description.height; ++y) {
    for (int32_t x = 0; x < description.width; ++x) {
      std::memcpy(Row(frame, y) + x * 4, bytes, sizeof(bytes));
    }
  }
}

Values ValuesAt(host::MemoryFrame& frame, int32_t x, int32_t y) {
  Values stored;
  std::memcpy(stored.data(), Row(frame, y) + x * 16, sizeof(stored));
  return {stored[2], stored[1], stored[0], stored[3]};
}

void FillValues(host::MemoryFrame& frame, const Values& values) {
  const FrameDescription description = Describe(frame);
  const Values stored = {values[2], values[1], values[0], values[3]};
  for (int32_t y = 0; y < description.height; ++y) {
    for (int32_t x = 0; x < description.width; ++x) {
      std::memcpy(Row(frame, y) + x * 16, stored.data(), sizeof(stored));
    }
  }
}

std::vector<uint8_t> BytesOf(host::MemoryFrame& frame) {
  const FrameDescription description = Describe(frame);
  return {Row(frame, 0), Row(frame, description.height)};
}

void FillBytes(host::MemoryFrame& frame, uint8_t byte) {
  std::fill(Row(frame, 0), Row(frame, Describe(frame).height), byte);
}

void FillWithPattern(host::MemoryFrame& frame) {
  const FrameDescription description = Describe(frame);
  for (int32_t y = 0; y < description.height; ++y) {
    for (int32_t x = 0; x < description.width * 4; ++x) {
      Row(frame, y)[x] = static_cast<uint8_t>(37 * x + 91 * y + 11 * (x / 64));
    }
  }
}

std::unique_ptr<host::TextureFrame> TextureOf(host::MemoryFrame& frame) {
  const FrameDescription description = Describe(frame);
  std::string error;
  auto texture = host::TextureFrame::Create(description.width, description.height,
                                            description.pixel_type, &error);
  if (texture == nullptr) throw std::runtime_error(error);
  if (!texture->Upload(frame.GetPixels(), description.stride)) {
    throw std::runtime_error("the picture cannot be uploaded");
  }
  return texture;
}

std::unique_ptr<host::MemoryFrame> MemoryOf(host::TextureFrame& frame) {
  const FrameDescription description = Describe(frame);
  auto memory = std::make_unique<host::MemoryFrame>(description.width, description.height,
                                                    description.pixel_type);
  if (frame.ReadPixels(memory->GetPixels(), Describe(*memory).stride) != kOk) {
    throw std::runtime_error("the texture cannot be read");
  }
  return memory;
}

testing::AssertionResult SamePictures(host::MemoryFrame& result, host::MemoryFrame& reference,
                                      int tolerance) {
  const FrameDescription description = Describe(result);
  for (int32_t y = 0; y < description.height; ++y) {
    for (int32_t x = 0; x < description.width; ++x) {
      const Rgba a = PixelAt(result, x, y);
      const Rgba b = PixelAt(reference, x, y);
      if (IsNear(a, b, tolerance)) continue;
      return testing::AssertionFailure()
             << "at (" << x << ", " << y << "): " << a << " instead of " << b;
    }
  }
  return testing::AssertionSuccess();
}

}  // namespace krv::test
