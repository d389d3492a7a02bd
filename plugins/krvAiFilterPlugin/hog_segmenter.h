// Finds people without a model: a detector of upright people, colours, and the pictures before.
#pragma once

#include <opencv2/core.hpp>
#include <vector>

#include "people_detector.h"
#include "segmenter.h"

namespace krv {

class HogSegmenter final : public Segmenter {
 public:
  HogSegmenter();
  cv::Mat Segment(const cv::Mat& picture) override;

 private:
  struct Person {
    cv::Rect2d window;
    cv::Mat shape;     // what is expected in the window
    double score = 0;  // an average of the detector's
  };

  // Whether the picture continues those before. Forgets them when it does not.
  bool FollowShot(const cv::Mat& picture);
  std::vector<Person> FindPeople(const cv::Mat& picture) const;
  // The shape of somebody whom the mask shows in the window, for the next picture.
  cv::Mat Expected(const cv::Mat& mask, const cv::Rect2d& window) const;
  void Steady(const cv::Mat& picture, cv::Mat& mask);

  const PeopleDetector detector_;
  const cv::Mat usual_shape_;
  // Of the picture before; empty at the start of a shot.
  cv::Mat last_picture_;
  std::vector<Person> people_;
  cv::Mat belief_;  // CV_32FC1: how much a pixel has been a person's lately, 0 to 1
};

}  // namespace krv
