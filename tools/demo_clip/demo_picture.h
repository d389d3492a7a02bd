// A calm, dark moving background.
#pragma once

#include <opencv2/core.hpp>
#include <vector>

#include "media/picture.h"

namespace krv::demo {

// Soft discs of light drifting over a slowly turning gradient, dark enough for figures to stand
// out.
class DemoPicture {
 public:
  DemoPicture(int width, int height);

  // Draws the picture at `seconds` into `out`.
  void Draw(double seconds, host::Picture* out);

 private:
  struct Disc {
    cv::Point2d place;   // at 0 s, in shares of the picture
    cv::Point2d motion;  // shares per second
    double radius;       // share of the height
    double light;        // 0 to 1
    double phase;        // of its slow breathing
    cv::Scalar colour;   // blue, green, red; 0 to 1
  };

  void DrawGradient(double seconds);
  void DrawDisc(const Disc& disc, double seconds);

  int width_;
  int height_;
  std::vector<Disc> discs_;
  cv::Mat canvas_;  // small, float, blue green red, 0 to 1
  cv::Mat grain_;   // full size; hides the steps of 8-bit shades
};

}  // namespace krv::demo
