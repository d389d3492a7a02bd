// The loops are written so that compilers make vector code of them: 16-bit numbers, no branches,
// products of which the upper half is kept, and factors that are no constants, which compilers
// would take apart into shifts and sums.
#include "media/yuv420_converter.h"

#include <algorithm>
#include <bit>
#include <cmath>

extern "C" {
#include <libavutil/frame.h>
#include <libswscale/swscale.h>
}

namespace krv::host {
namespace {

using Cubic = Yuv420Converter::Cubic;
using Coefficients = Yuv420Converter::Coefficients;

constexpr int kEdge = 2;  // samples that the cubic needs beyond the ends of a row

inline int16_t UpperHalf(int16_t a, int16_t b) {
  return static_cast<int16_t>((int32_t{a} * b) >> 16);
}

// Sums that stay in 16 bits, said after every step: compilers would widen them.
inline int16_t Add(int16_t a, int16_t b) { return static_cast<int16_t>(a + b); }
inline int16_t Subtract(int16_t a, int16_t b) { return static_cast<int16_t>(a - b); }

// Half the values' scale, rounded: each of the four products loses half a unit on average.
inline int16_t Interpolate(const Cubic& cubic, int16_t nearest, int16_t next, int16_t other,
                           int16_t second) {
  return Add(Add(Add(UpperHalf(nearest, cubic.nearest), UpperHalf(next, cubic.next)),
                 Add(UpperHalf(other, cubic.other), UpperHalf(second, cubic.second))),
             2);
}

// Chroma around 0, times 256, with the ends repeated.
void Pad(const uint8_t* __restrict from, int width, int16_t* __restrict to) {
  for (int x = 0; x < width; ++x) to[kEdge + x] = static_cast<int16_t>((from[x] - 128) * 256);
  for (int x = 0; x < kEdge; ++x) {
    to[x] = to[kEdge];
    to[kEdge + width + x] = to[kEdge + width - 1];
  }
}

// Chroma times 128, twice as many.
void Widen(const int16_t* __restrict from, const Cubic& weights, int width,
           int16_t* __restrict to) {
  const Cubic cubic = weights;      // a copy, which `to` cannot change
  constexpr int16_t kMost = 16383;  // where swscale cuts off overshoot
  for (int x = 0; x < width; ++x) {
    const int16_t* at = from + kEdge + x;
    to[2 * x] = std::min(kMost, Interpolate(cubic, at[0], at[-1], at[1], at[-2]));
    to[2 * x + 1] = std::min(kMost, Interpolate(cubic, at[0], at[1], at[-1], at[2]));
  }
}

// The four rows of wide chroma around a row of the picture, in the order of Interpolate's
// arguments.
struct ChromaRows {
  const int16_t* nearest;
  const int16_t* next;
  const int16_t* other;
  const int16_t* second;
};

inline uint16_t ToByte(int16_t value) {
  const auto whole = static_cast<int16_t>(value >> 5);
  return static_cast<uint16_t>(std::clamp<int16_t>(whole, 0, 255));
}

// Two neighbouring bytes, stored as one number: vector code for single ones is poor.
inline uint16_t Pair(uint16_t first, uint16_t second) {
  static_assert(std::endian::native == std::endian::little);
  return static_cast<uint16_t>(first | (second << 8));
}

// Colours are computed times 32, with a half for rounding and what the products lose on average.
void ConvertRow(const uint8_t* __restrict luma, const ChromaRows& u_rows, const ChromaRows& v_rows,
                const Coefficients& coefficients, int width, uint16_t* __restrict out) {
  const ChromaRows u = u_rows;  // copies, which `out` cannot change
  const ChromaRows v = v_rows;
  const Coefficients k = coefficients;
  for (int x = 0; x < width; ++x) {
    const auto light = static_cast<int16_t>((luma[x] - 128) * 256);
    const int16_t y = Subtract(UpperHalf(light, k.luma), k.black);
    const int16_t blueness =
        Interpolate(k.cubic, u.nearest[x], u.next[x], u.other[x], u.second[x]);  // times 64
    const int16_t redness =
        Interpolate(k.cubic, v.nearest[x], v.next[x], v.other[x], v.second[x]);  // times 64
    const int16_t twice_u = Add(blueness, blueness);
    const int16_t twice_v = Add(redness, redness);
    const int16_t blue = Add(Add(y, 17), Add(blueness, UpperHalf(twice_u, k.blue_by_u)));
    const int16_t green = Subtract(
        Add(y, 16), Add(UpperHalf(twice_u, k.green_by_u), UpperHalf(twice_v, k.green_by_v)));
    const int16_t red = Add(Add(y, 17), UpperHalf(twice_v, k.red_by_v));
    out[2 * x] = Pair(ToByte(blue), ToByte(green));
    out[2 * x + 1] = Pair(ToByte(red), 255);
  }
}

Coefficients CoefficientsOf(int matrix, bool full_range) {
  const int* table = sws_getCoefficients(matrix);  // for limited range, times 65536
  const auto scaled = [](double factor) {
    return static_cast<int16_t>(std::lround(factor * (1 << 14)));
  };
  const double chroma = (full_range ? 224.0 / 255 : 1.0) / 65536;
  const double luma = full_range ? 1.0 : 255.0 / 219;
  const int black = full_range ? 0 : 16;
  return {{},
          scaled(luma / 2),
          scaled(table[0] * chroma),
          scaled(table[2] * chroma),
          scaled(table[3] * chroma),
          scaled(table[1] * chroma - 2),
          static_cast<int16_t>(std::lround((black - 128) * luma * 32))};
}

}  // namespace

bool Yuv420Converter::Takes(const AVFrame& frame, int width, int height) {
  return (frame.format == AV_PIX_FMT_YUV420P || frame.format == AV_PIX_FMT_YUVJ420P) &&
         frame.width == width && frame.height == height && width % 2 == 0 && height % 2 == 0;
}

Yuv420Converter::Yuv420Converter(int matrix, bool full_range)
    : coefficients_(CoefficientsOf(matrix, full_range)) {}

void Yuv420Converter::WideRows::Start(const uint8_t* plane, int stride, int width, int height) {
  plane_ = plane;
  stride_ = stride;
  width_ = width;
  height_ = height;
  next_ = 0;
  padded_.resize(static_cast<size_t>(width + 2 * kEdge));
  for (std::vector<int16_t>& row : rows_) row.resize(static_cast<size_t>(width) * 2);
}

void Yuv420Converter::WideRows::AdvanceTo(int row, const Cubic& cubic) {
  for (; next_ <= std::min(row, height_ - 1); ++next_) {
    Pad(plane_ + static_cast<ptrdiff_t>(next_) * stride_, width_, padded_.data());
    Widen(padded_.data(), cubic, width_, rows_[next_ % 4].data());
  }
}

const int16_t* Yuv420Converter::WideRows::Row(int row) const {
  return rows_[std::clamp(row, 0, height_ - 1) % 4].data();
}

void Yuv420Converter::Convert(const AVFrame& frame, Picture* out) {
  out->Resize(frame.width, frame.height);
  u_.Start(frame.data[1], frame.linesize[1], frame.width / 2, frame.height / 2);
  v_.Start(frame.data[2], frame.linesize[2], frame.width / 2, frame.height / 2);
  for (int y = 0; y < frame.height; ++y) {
    const int row = y / 2;
    const int side = y % 2 == 0 ? -1 : 1;  // of the chroma row on which this one lies
    const auto rows = [this, row, side](WideRows* plane) {
      plane->AdvanceTo(side < 0 ? row + 1 : row + 2, coefficients_.cubic);
      return ChromaRows{plane->Row(row), plane->Row(row + side), plane->Row(row - side),
                        plane->Row(row + 2 * side)};
    };
    ConvertRow(frame.data[0] + static_cast<ptrdiff_t>(y) * frame.linesize[0], rows(&u_), rows(&v_),
               coefficients_, frame.width, reinterpret_cast<uint16_t*>(out->Row(y)));
  }
}

}  // namespace krv::host
