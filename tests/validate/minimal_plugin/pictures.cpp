#include "pictures.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace krv::test {
namespace {

float ReadChannel(const unsigned char* from, int pixel_type) {
  if (pixel_type == kPixel8) return static_cast<float>(*from) / 255;
  if (pixel_type == kPixel16) {
    uint16_t value = 0;
    std::memcpy(&value, from, sizeof(value));
    return static_cast<float>(value) / 65535;
  }
  float value = 0;
  std::memcpy(&value, from, sizeof(value));
  return value;
}

void WriteChannel(float value, int pixel_type, unsigned char* to) {
  const float part = std::clamp(value, 0.0F, 1.0F);
  if (pixel_type == kPixel8) {
    *to = static_cast<unsigned char>(part * 255 + 0.5F);
  } else if (pixel_type == kPixel16) {
    const auto word = static_cast<uint16_t>(part * 65535 + 0.5F);
    std::memcpy(to, &word, sizeof(word));
  } else {
    std::memcpy(to, &value, sizeof(value));
  }
}

}  // namespace

int ChannelBytes(int pixel_type) {
  constexpr int kBytes[] = {1, 2, 4};
  return pixel_type < kPixel8 || pixel_type > kPixelFloat ? 0 : kBytes[pixel_type];
}

bool Read(HostFrame& frame, Picture* picture) {
  FrameDescription description{};
  if (frame.Describe(&description) != 0) return false;
  const int bytes = ChannelBytes(description.pixel_type);
  if (bytes == 0 || description.width <= 0 || description.height <= 0) return false;
  const int values = description.width * 4;
  if (description.form == kFrameInMemory && description.stride < values * bytes) return false;
  std::vector<unsigned char> rows(static_cast<size_t>(values) * static_cast<size_t>(bytes) *
                                  static_cast<size_t>(description.height));
  if (frame.ReadPixels(rows.data(), values * bytes) != 0) return false;
  *picture = {description.width, description.height,
              std::vector<float>(rows.size() / static_cast<size_t>(bytes))};
  for (size_t i = 0; i < picture->channels.size(); ++i) {
    picture->channels[i] =
        ReadChannel(&rows[i * static_cast<size_t>(bytes)], description.pixel_type);
  }
  return true;
}

std::vector<unsigned char> ToRows(const Picture& picture, const FrameDescription& description) {
  const auto bytes = static_cast<size_t>(ChannelBytes(description.pixel_type));
  const auto width = static_cast<size_t>(description.width);
  const auto height = static_cast<size_t>(description.height);
  std::vector<unsigned char> rows(width * height * 4 * bytes);
  for (size_t i = 0; i < width * height * 4; ++i) {
    const size_t x = i / 4 % width * static_cast<size_t>(picture.width) / width;
    const size_t y = i / 4 / width * static_cast<size_t>(picture.height) / height;
    const size_t at = (y * static_cast<size_t>(picture.width) + x) * 4 + i % 4;
    WriteChannel(picture.channels[at], description.pixel_type, &rows[i * bytes]);
  }
  return rows;
}

}  // namespace krv::test
