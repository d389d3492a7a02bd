#include "hog_segmenter.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>

#include "body_shape.h"
#include "cut_out.h"

namespace krv {
namespace {

constexpr int kLeastSide = 16;  // pixels; in smaller pictures nobody can be made out
constexpr size_t kMostPeople = 6;
// What it takes to become a person and to stay one: the detector's score, and its average over the
// last pictures, in which being missed counts as a score as well.
constexpr double kNewScore = 0.8;
constexpr double kKnownScore = 0.2;
constexpr double kMissedScore = -1;
constexpr double kMostScore = 2;
constexpr double kWeightOfScore = 0.2;
constexpr double kSamePlace = 0.3;  // as intersection over union
// The mean difference, of 255, between small versions of two pictures of one shot.
constexpr double kMostChange = 24;
const cv::Size kSmall(32, 18);
constexpr double kWeightOfSeen = 0.7;  // of a window, against where it was
// Of the usual shape, against what was cut out before: enough for what was lost to be found again.
constexpr double kWeightOfUsual = 0.6;
constexpr double kWeightOfBelief = 0.5;  // of what a pixel was, where nothing moves
constexpr double kStill = 8;             // of 255, in every channel
const cv::Size kNoise(3, 3);             // pixels over which noise evens out
constexpr double kEdgeBlur = 0.8;        // pixels

double Difference(const cv::Mat& a, const cv::Mat& b) {
  cv::Mat small_a;
  cv::Mat small_b;
  cv::resize(a, small_a, kSmall, 0, 0, cv::INTER_AREA);
  cv::resize(b, small_b, kSmall, 0, 0, cv::INTER_AREA);
  return cv::norm(small_a, small_b, cv::NORM_L1) /
         static_cast<double>(kSmall.area() * small_a.channels());
}

cv::Rect2d Between(const cv::Rect2d& a, const cv::Rect2d& b, double weight_of_b) {
  const double rest = 1 - weight_of_b;
  return {a.tl() * rest + b.tl() * weight_of_b, a.br() * rest + b.br() * weight_of_b};
}

// Whether the picture's side cuts the body in a window: somebody lost there has left.
bool IsAtSide(const cv::Rect2d& window, int picture_width) {
  const double margin = window.width / 4;
  return window.x + margin < 0 || window.x + window.width - margin > picture_width;
}

double NextScore(double before, double now) {
  return (1 - kWeightOfScore) * std::min(before, kMostScore) + kWeightOfScore * now;
}

}  // namespace

HogSegmenter::HogSegmenter() : usual_shape_(UsualBodyShape()) {}

bool HogSegmenter::FollowShot(const cv::Mat& picture) {
  const bool continues =
      last_picture_.size() == picture.size() && Difference(picture, last_picture_) <= kMostChange;
  if (!continues) people_.clear();
  return continues;
}

std::vector<HogSegmenter::Person> HogSegmenter::FindPeople(const cv::Mat& picture) const {
  std::vector<Person> known = people_;
  std::vector<Person> found;
  for (const PersonWindow& seen : detector_.Detect(picture)) {
    const auto before = std::find_if(known.begin(), known.end(), [&](const Person& person) {
      return IntersectionOverUnion(person.window, seen.area) > kSamePlace;
    });
    if (before != known.end()) {
      found.push_back({Between(before->window, seen.area, kWeightOfSeen), before->shape,
                       NextScore(before->score, seen.score)});
      known.erase(before);
    } else if (seen.score >= kNewScore) {
      found.push_back({seen.area, usual_shape_, seen.score});
    }
  }
  for (const Person& person : known) {
    if (IsAtSide(person.window, picture.cols)) continue;
    found.push_back({person.window, person.shape, NextScore(person.score, kMissedScore)});
  }
  std::erase_if(found, [](const Person& person) { return person.score < kKnownScore; });
  found.resize(std::min(found.size(), kMostPeople));
  return found;
}

// What stays as it is keeps its side of an edge.
void HogSegmenter::Steady(const cv::Mat& picture, cv::Mat& mask) {
  cv::Mat calm;
  cv::Mat calm_before;
  cv::blur(picture, calm, kNoise);
  cv::blur(last_picture_, calm_before, kNoise);
  cv::Mat moved;
  cv::absdiff(calm, calm_before, moved);
  cv::Mat still;
  cv::inRange(moved, cv::Scalar::all(0), cv::Scalar::all(kStill), still);
  cv::Mat steadied;
  cv::addWeighted(mask, 1 - kWeightOfBelief, belief_, kWeightOfBelief, 0, steadied);
  steadied.copyTo(mask, still);
}

cv::Mat HogSegmenter::Expected(const cv::Mat& mask, const cv::Rect2d& window) const {
  return usual_shape_ * kWeightOfUsual + TakeBodyShape(mask, window) * (1 - kWeightOfUsual);
}

cv::Mat HogSegmenter::Segment(const cv::Mat& picture) {
  if (std::min(picture.cols, picture.rows) < kLeastSide) {
    return cv::Mat::zeros(picture.size(), CV_8UC1);
  }
  const bool continues = FollowShot(picture);
  people_ = FindPeople(picture);
  cv::Mat mask = cv::Mat::zeros(picture.size(), CV_8UC1);
  for (Person& person : people_) {
    const cv::Mat guess = PlaceBodyShape(person.shape, person.window, picture.size());
    const cv::Mat cut = CutOut(picture, guess, person.window);
    mask |= cut;
    person.shape = Expected(cut, person.window);
  }
  cv::Mat belief;
  mask.convertTo(belief, CV_32F, 1.0 / 255);
  cv::GaussianBlur(belief, belief, {}, kEdgeBlur);
  if (continues) Steady(picture, belief);
  belief_ = belief;
  last_picture_ = picture.clone();
  return belief_ > 0.5;
}

}  // namespace krv
