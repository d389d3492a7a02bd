// The commonest form of decoded video as pictures, quickly.
#pragma once

#include <cstdint>
#include <vector>

#include "media/picture.h"

struct AVFrame;

namespace krv::host {

// Converts 8-bit planar 4:2:0 frames of even sides. The colours are those that swscale gives with
// SWS_BICUBIC | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT, to 1 in 255: chroma is interpolated in both
// directions by the same cubic with the same places of its samples. swscale has no vector code for
// these flags. In the third row and column, where the cubic reaches beyond the edge by one sample,
// and where swscale's sums run over beside the strongest colours, they can differ by more.
class Yuv420Converter {
 public:
  // Whether frames like this one can be converted to pictures of this size.
  static bool Takes(const AVFrame& frame, int width, int height);

  // `matrix`: an AVColorSpace, whose values swscale shares.
  Yuv420Converter(int matrix, bool full_range);

  // Sets the size of `out`. The frame must be one that Takes takes.
  void Convert(const AVFrame& frame, Picture* out);

  // A cubic (B = 0, C = 0.6) a quarter of a sample beside the nearest sample; times 2^15.
  struct Cubic {
    int16_t nearest = 28570;
    int16_t next = 7885;    // on the side of the place
    int16_t other = -2765;  // on the other side
    int16_t second = -922;  // beyond the next one
  };

  // How YUV becomes RGB; factors times 2^14.
  struct Coefficients {
    Cubic cubic;
    int16_t luma;  // times 2^13
    int16_t red_by_v;
    int16_t green_by_u;
    int16_t green_by_v;
    int16_t blue_by_u;  // less 2
    int16_t black;      // less 128, as what luma becomes: times 32
  };

 private:
  // Rows of one chroma plane, as wide as the picture; row n of the plane lies in n % 4.
  class WideRows {
   public:
    void Start(const uint8_t* plane, int stride, int width, int height);
    // Widens rows up to `row`.
    void AdvanceTo(int row, const Cubic& cubic);
    const int16_t* Row(int row) const;  // the nearest one there is

   private:
    const uint8_t* plane_ = nullptr;
    int stride_ = 0;
    int width_ = 0;   // of the plane
    int height_ = 0;  // of the plane
    int next_ = 0;
    std::vector<int16_t> padded_;
    std::vector<int16_t> rows_[4];
  };

  Coefficients coefficients_;
  WideRows u_;
  WideRows v_;
};

}  // namespace krv::host
