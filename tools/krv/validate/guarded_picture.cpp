#include "validate/guarded_picture.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace krv::tool {
namespace {

bool AllAre(const uint8_t* begin, const uint8_t* end, uint8_t byte) {
  return std::all_of(begin, end, [byte](uint8_t one) { return one == byte; });
}

// Of the value at a byte of an 8-bit picture of that width.
uint8_t PatternAt(size_t i, size_t row_values) {
  const size_t x = i % row_values;
  const size_t y = i / row_values;
  if (x % 4 == 3) return y % 8 < 6 ? 255 : 128;  // alpha
  return static_cast<uint8_t>(37 * x + 91 * y + 11 * (x / 64));
}

}  // namespace

GuardedPicture::GuardedPicture(const PictureShape& shape)
    : shape_(shape), buffer_(shape.BufferBytes() + 2 * kGuardBytes, kGuard) {}

FrameDescription GuardedPicture::Description() const {
  return {shape_.pixel_type, kFrameInMemory, shape_.width, shape_.height, shape_.Stride()};
}

uint8_t* GuardedPicture::Row(int32_t y) {
  return pixels() + static_cast<ptrdiff_t>(y) * shape_.Stride();
}

const uint8_t* GuardedPicture::Row(int32_t y) const {
  return const_cast<GuardedPicture*>(this)->Row(y);
}

void GuardedPicture::FillRows(uint8_t byte) {
  for (int32_t y = 0; y < shape_.height; ++y) std::fill_n(Row(y), shape_.RowBytes(), byte);
}

void GuardedPicture::SetRows(const Rows& rows) {
  host::CopyRows(rows.data(), shape_.RowBytes(), pixels(), shape_.Stride(), shape_.RowBytes(),
                 shape_.height);
}

Rows GuardedPicture::TakeRows() const {
  Rows rows(static_cast<size_t>(shape_.RowBytes()) * static_cast<size_t>(shape_.height));
  host::CopyRows(Row(0), shape_.Stride(), rows.data(), shape_.RowBytes(), shape_.RowBytes(),
                 shape_.height);
  return rows;
}

bool GuardedPicture::RowsHold(uint8_t byte) const {
  for (int32_t y = 0; y < shape_.height; ++y) {
    if (!AllAre(Row(y), Row(y) + shape_.RowBytes(), byte)) return false;
  }
  return true;
}

bool GuardedPicture::GuardsAreWhole() const {
  const uint8_t* const begin = buffer_.data();
  if (!AllAre(begin, begin + kGuardBytes, kGuard)) return false;
  for (int32_t y = 0; y < shape_.height; ++y) {
    if (!AllAre(Row(y) + shape_.RowBytes(), Row(y) + shape_.Stride(), kGuard)) return false;
  }
  const uint8_t* const end = begin + buffer_.size();
  return AllAre(end - kGuardBytes, end, kGuard);
}

Rows TestPattern(const PictureShape& shape) {
  const auto row_values = static_cast<size_t>(shape.width) * 4;
  const size_t values = row_values * static_cast<size_t>(shape.height);
  const size_t value_bytes = static_cast<size_t>(host::BytesPerPixel(shape.pixel_type)) / 4;
  Rows rows(values * value_bytes);
  for (size_t i = 0; i < values; ++i) {
    const uint8_t value = PatternAt(i, row_values);
    if (shape.pixel_type == kPixelFloat) {
      const float channel = static_cast<float>(value) / 255;
      std::memcpy(&rows[i * value_bytes], &channel, value_bytes);
    } else {
      std::fill_n(&rows[i * value_bytes], value_bytes, value);  // 0xVVVV is the same part of 65535
    }
  }
  return rows;
}

bool IsFinite(const Rows& rows, int32_t pixel_type) {
  if (pixel_type != kPixelFloat) return true;
  for (size_t i = 0; i + sizeof(float) <= rows.size(); i += sizeof(float)) {
    float channel = 0;
    std::memcpy(&channel, &rows[i], sizeof(channel));
    if (!std::isfinite(channel)) return false;
  }
  return true;
}

}  // namespace krv::tool
