#include "ai_filter/drawn_person.h"

#include <opencv2/imgproc.hpp>
#include <vector>

namespace krv::test {
namespace {

// Parts of a body, in hundredths of its height: from the feet's middle to the right, and up.
using Part = std::vector<cv::Point2d>;
const Part kTrunk = {{-5, 84}, {5, 84},  {13, 80},  {15, 48},  {11, 47},
                     {9, 44},  {-9, 44}, {-11, 47}, {-15, 48}, {-13, 80}};
const Part kLeftLeg = {{-9, 48}, {0, 48}, {-2, 20}, {-3, 0}, {-11, 0}, {-9, 20}};
const Part kRightLeg = {{0, 48}, {9, 48}, {9, 20}, {11, 0}, {3, 0}, {2, 20}};
const cv::Point2d kHead(0, 92);
constexpr double kHeadRadius = 7;

class Body {
 public:
  Body(cv::Mat& canvas, const cv::Point& feet, int height)
      : canvas_(canvas), feet_(feet), scale_(height / 100.0) {}

  void Fill(const Part& part, const cv::Scalar& colour) {
    std::vector<cv::Point> points;
    for (const cv::Point2d& point : part) points.push_back(At(point));
    cv::fillPoly(canvas_, std::vector<std::vector<cv::Point>>{points}, colour);
  }

  void FillHead(const cv::Scalar& colour) {
    const cv::Size radii(cvRound(0.75 * kHeadRadius * scale_), cvRound(kHeadRadius * scale_));
    cv::ellipse(canvas_, At(kHead), radii, 0, 0, 360, colour, cv::FILLED);
  }

 private:
  cv::Point At(const cv::Point2d& point) const {
    return {cvRound(feet_.x + point.x * scale_), cvRound(feet_.y - point.y * scale_)};
  }

  cv::Mat& canvas_;
  const cv::Point feet_;
  const double scale_;
};

}  // namespace

cv::Mat EmptyRoom(double light) {
  cv::Mat room(kPictureSize, CV_8UC4);
  for (int y = 0; y < room.rows; ++y) {
    const double level = light - 20.0 * y / room.rows;
    room.row(y).setTo(cv::Scalar(level, level * 0.98, level * 0.94, 255));
  }
  return room;
}

cv::Mat PersonMatte(const cv::Point& feet, int height) {
  cv::Mat matte = cv::Mat::zeros(kPictureSize, CV_8UC1);
  Body body(matte, feet, height);
  for (const Part& part : {kLeftLeg, kRightLeg, kTrunk}) body.Fill(part, 255);
  body.FillHead(255);
  return matte;
}

void DrawPerson(cv::Mat& picture, const cv::Point& feet, int height) {
  Body body(picture, feet, height);
  body.Fill(kLeftLeg, {70, 45, 30, 255});
  body.Fill(kRightLeg, {70, 45, 30, 255});
  body.Fill(kTrunk, {40, 30, 120, 255});
  body.FillHead({60, 80, 110, 255});
}

}  // namespace krv::test
