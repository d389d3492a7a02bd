// A host's person mask for tests.
#pragma once

#include <cstdint>
#include <opencv2/core.hpp>

#include "krv/effect_context.h"

namespace krv::test {

class TestMask final : public PersonMaskSource {
 public:
  // Nobody, until pixels are set.
  TestMask(int32_t columns, int32_t rows) : pixels(cv::Mat::zeros(rows, columns, CV_8UC4)) {}

  // A person who fills a rectangle.
  TestMask(int32_t columns, int32_t rows, const cv::Rect& person) : TestMask(columns, rows) {
    pixels(person).setTo(cv::Scalar::all(255));
  }

  uint8_t GetMask(uint8_t** first, int32_t* width, int32_t* height, int32_t* stride) override {
    *first = pixels.data;
    *width = pixels.cols;
    *height = pixels.rows;
    *stride = static_cast<int32_t>(pixels.step[0]);
    return answer;
  }

  cv::Mat pixels;      // CV_8UC4
  uint8_t answer = 1;  // 0: no mask for this frame
};

}  // namespace krv::test
