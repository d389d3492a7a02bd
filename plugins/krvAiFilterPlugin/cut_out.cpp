#include "cut_out.h"

#include <opencv2/imgproc.hpp>

namespace krv {
namespace {

constexpr float kCertain = 0.97F;
constexpr float kLikely = 0.5F;
constexpr float kImpossible = 0.02F;
constexpr int kRounds = 3;
constexpr double kMargin = 0.25;  // of the window's width: what the background looks like
// A cut that has far more or less than the guess has failed: the colours are too alike.
constexpr double kLeastOfGuess = 0.45;
constexpr double kMostOfGuess = 1.9;

// Cutting starts from random numbers; the caller's own stay as they are.
class ScopedRandomSeed {
 public:
  ScopedRandomSeed() : state_(cv::theRNG().state) { cv::theRNG().state = 1; }
  ScopedRandomSeed(const ScopedRandomSeed&) = delete;
  ScopedRandomSeed& operator=(const ScopedRandomSeed&) = delete;
  ~ScopedRandomSeed() { cv::theRNG().state = state_; }

 private:
  const uint64_t state_;
};

cv::Rect Surroundings(const cv::Rect2d& window, const cv::Size& size) {
  const double margin = kMargin * window.width;
  const cv::Rect wide(cvFloor(window.x - margin), cvFloor(window.y - margin),
                      cvCeil(window.width + 2 * margin), cvCeil(window.height + 2 * margin));
  return wide & cv::Rect({}, size);
}

cv::Mat Labels(const cv::Mat& likelihood) {
  cv::Mat labels(likelihood.size(), CV_8UC1, cv::Scalar(cv::GC_PR_BGD));
  labels.setTo(cv::GC_BGD, likelihood < kImpossible);
  labels.setTo(cv::GC_PR_FGD, likelihood >= kLikely);
  labels.setTo(cv::GC_FGD, likelihood >= kCertain);
  return labels;
}

// Leaves the pieces of a mask that the guess touches.
void DropStrayPieces(const cv::Mat& guess, cv::Mat& mask) {
  cv::Mat pieces;
  cv::Mat stats;
  cv::Mat centres;
  const int count = cv::connectedComponentsWithStats(mask, pieces, stats, centres, 8);
  for (int i = 1; i < count; ++i) {
    const cv::Mat piece = pieces == i;
    const int area = stats.at<int>(i, cv::CC_STAT_AREA);
    if (cv::countNonZero(piece & guess) * 2 < area) mask.setTo(0, piece);
  }
}

bool IsSplit(const cv::Mat& labels) {
  const int ahead = cv::countNonZero(labels & 1);  // GC_FGD and GC_PR_FGD are odd
  return ahead > 0 && ahead < labels.size().area();
}

}  // namespace

cv::Mat CutOut(const cv::Mat& picture, const cv::Mat& likelihood, const cv::Rect2d& window) {
  cv::Mat mask = cv::Mat::zeros(picture.size(), CV_8UC1);
  const cv::Rect part = Surroundings(window, picture.size());
  if (part.empty()) return mask;
  const cv::Mat guess = likelihood(part) >= kLikely;
  cv::Mat labels = Labels(likelihood(part));
  guess.copyTo(mask(part));
  if (!IsSplit(labels)) return mask;

  const ScopedRandomSeed seed;
  cv::Mat background_colours;
  cv::Mat person_colours;
  cv::grabCut(picture(part), labels, {}, background_colours, person_colours, kRounds,
              cv::GC_INIT_WITH_MASK);
  cv::Mat cut = (labels & 1) != 0;
  DropStrayPieces(guess, cut);
  const double ratio = static_cast<double>(cv::countNonZero(cut)) / cv::countNonZero(guess);
  if (ratio >= kLeastOfGuess && ratio <= kMostOfGuess) cut.copyTo(mask(part));
  return mask;
}

}  // namespace krv
