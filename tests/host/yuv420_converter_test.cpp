#include "media/yuv420_converter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <string>

#include "media/av_ptr.h"

extern "C" {
#include <libavutil/frame.h>
#include <libswscale/swscale.h>
}

namespace krv::host {
namespace {

FramePtr MakeYuvFrame(int width, int height, AVPixelFormat format = AV_PIX_FMT_YUV420P) {
  FramePtr frame = MakeFrame();
  frame->width = width;
  frame->height = height;
  frame->format = format;
  EXPECT_EQ(av_frame_get_buffer(frame.get(), 0), 0);
  return frame;
}

// Squares of random colours: flat parts and edges in all directions. Chroma stays where the sums of
// swscale, which are 32 bits, do not run over beside an edge.
FramePtr MakeColourfulFrame(int width, int height, int square) {
  FramePtr frame = MakeYuvFrame(width, height);
  std::mt19937 random(1);
  for (int plane = 0; plane < 3; ++plane) {
    const int low = plane == 0 ? 0 : 64;
    const int high = plane == 0 ? 255 : 192;
    const int columns = plane == 0 ? width : width / 2;
    for (int y = 0; y < (plane == 0 ? height : height / 2); ++y) {
      uint8_t* row = frame->data[plane] + static_cast<ptrdiff_t>(y) * frame->linesize[plane];
      for (int x = 0; x < columns; ++x) {
        if (y % square != 0) {
          row[x] = *(row + x - frame->linesize[plane]);
        } else if (x % square != 0) {
          row[x] = row[x - 1];
        } else {
          row[x] = static_cast<uint8_t>(low + static_cast<int>(random() % (high - low + 1u)));
        }
      }
    }
  }
  return frame;
}

Picture BySwscale(const AVFrame& frame, int matrix, bool full_range) {
  Picture picture(frame.width, frame.height);
  const ScalerPtr scaler(sws_getContext(
      frame.width, frame.height, AV_PIX_FMT_YUV420P, frame.width, frame.height, AV_PIX_FMT_BGRA,
      SWS_BICUBIC | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT, nullptr, nullptr, nullptr));
  sws_setColorspaceDetails(scaler.get(), sws_getCoefficients(matrix), full_range ? 1 : 0,
                           sws_getCoefficients(SWS_CS_DEFAULT), 1, 0, 1 << 16, 1 << 16);
  uint8_t* const planes[4] = {picture.Row(0), nullptr, nullptr, nullptr};
  const int strides[4] = {picture.stride(), 0, 0, 0};
  sws_scale(scaler.get(), frame.data, frame.linesize, 0, frame.height, planes, strides);
  return picture;
}

TEST(Yuv420Converter, ColoursAreThoseOfSwscaleToOneStep) {
  constexpr int kSizes[][2] = {{34, 18}, {64, 64}, {180, 96}, {322, 242}};
  int64_t different = 0;
  int64_t all = 0;
  for (const auto& [width, height] : kSizes) {
    for (const int square : {1, 2, 9}) {
      const FramePtr frame = MakeColourfulFrame(width, height, square);
      for (const int matrix : {AVCOL_SPC_BT709, AVCOL_SPC_SMPTE170M, AVCOL_SPC_BT2020_NCL}) {
        for (const bool full_range : {false, true}) {
          Picture picture;
          Yuv420Converter(matrix, full_range).Convert(*frame, &picture);
          const Picture expected = BySwscale(*frame, matrix, full_range);
          ASSERT_EQ(picture.width(), width);
          int largest = 0;
          int largest_at_third = 0;
          for (int y = 0; y < height; ++y) {
            for (int i = 0; i < 4 * width; ++i) {
              const int difference = std::abs(picture.Row(y)[i] - expected.Row(y)[i]);
              int& most = y == 2 || i / 4 == 2 ? largest_at_third : largest;
              most = std::max(most, difference);
              if (difference > 0) ++different;
              ++all;
            }
          }
          const std::string what = std::to_string(width) + " pixels wide, squares of " +
                                   std::to_string(square) + ", matrix " + std::to_string(matrix) +
                                   ", full range " + std::to_string(full_range);
          EXPECT_LE(largest, 1) << what;
          // The one sample beyond the edge that this row and column need, swscale does not take
          // from the edge.
          EXPECT_LE(largest_at_third, 8) << what;
        }
      }
    }
  }
  EXPECT_LE(different, all / 20);
}

TEST(Yuv420Converter, TheStrongestColoursBesideEachOtherDoNotRunOver) {
  const FramePtr frame = MakeYuvFrame(64, 32);
  for (int plane = 0; plane < 3; ++plane) {
    for (int y = 0; y < (plane == 0 ? 32 : 16); ++y) {
      uint8_t* row = frame->data[plane] + static_cast<ptrdiff_t>(y) * frame->linesize[plane];
      const int columns = plane == 0 ? 64 : 32;
      for (int x = 0; x < columns; ++x) {
        row[x] = plane == 0 ? 255 : x < columns / 2 ? 0 : 255;
      }
    }
  }
  Picture picture;
  Yuv420Converter(AVCOL_SPC_BT709, false).Convert(*frame, &picture);
  // White light with the least blue and red on the left, the most on the right.
  for (int x = 0; x < 64; ++x) {
    const uint8_t* pixel = picture.Pixel(x, 16);
    if (x < 30) {
      EXPECT_LE(pixel[0], 9) << x;
      EXPECT_LE(pixel[2], 50) << x;
    }
    if (x >= 32) {
      EXPECT_EQ(pixel[0], 255) << x;
      EXPECT_EQ(pixel[2], 255) << x;
    }
  }
}

TEST(Yuv420Converter, TakesHalvedChromaOfEvenSidesInTheSameSize) {
  EXPECT_TRUE(Yuv420Converter::Takes(*MakeYuvFrame(64, 48), 64, 48));
  EXPECT_TRUE(Yuv420Converter::Takes(*MakeYuvFrame(64, 48, AV_PIX_FMT_YUVJ420P), 64, 48));
  EXPECT_FALSE(Yuv420Converter::Takes(*MakeYuvFrame(64, 48), 32, 24));
  EXPECT_FALSE(Yuv420Converter::Takes(*MakeYuvFrame(63, 48), 63, 48));
  EXPECT_FALSE(Yuv420Converter::Takes(*MakeYuvFrame(64, 47), 64, 47));
  EXPECT_FALSE(Yuv420Converter::Takes(*MakeYuvFrame(64, 48, AV_PIX_FMT_YUV422P), 64, 48));
  EXPECT_FALSE(Yuv420Converter::Takes(*MakeYuvFrame(64, 48, AV_PIX_FMT_YUVA420P), 64, 48));
}

}  // namespace
}  // namespace krv::host
