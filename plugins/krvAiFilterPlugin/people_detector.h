// Finds standing and walking people by OpenCV's own detector, whose coefficients are built in.
#pragma once

#include <opencv2/core.hpp>
#include <opencv2/objdetect.hpp>
#include <vector>

namespace krv {

// The detector's window, in pixels of the picture: twice as high as wide, with the person upright
// in its middle three quarters. May reach out of the picture.
struct PersonWindow {
  cv::Rect2d area;
  double score = 0;  // the higher, the surer; most of those above 0 are people
};

class PeopleDetector {
 public:
  PeopleDetector();

  // The windows in a CV_8UC3 picture, the surest first; of windows on top of each other the surest
  // one. Finds people from about a quarter of the shorter side to its whole.
  std::vector<PersonWindow> Detect(const cv::Mat& picture) const;

 private:
  cv::HOGDescriptor hog_;
};

// What two areas share, as a part of what they cover together: 0 to 1.
double IntersectionOverUnion(const cv::Rect2d& a, const cv::Rect2d& b);

}  // namespace krv
