#include "body_shape.h"

#include <opencv2/imgproc.hpp>
#include <vector>

namespace krv {
namespace {

const cv::Size kWindow(64, 128);
constexpr double kSoftness = 3.5;     // pixels by which people differ
constexpr double kTakenSoftness = 2;  // pixels by which one changes from picture to picture

// From the window's pixels to the picture's; centres of pixels meet.
cv::Matx23d ToPicture(const cv::Rect2d& area) {
  const double x_scale = area.width / kWindow.width;
  const double y_scale = area.height / kWindow.height;
  return {x_scale, 0, area.x + 0.5 * x_scale - 0.5, 0, y_scale, area.y + 0.5 * y_scale - 0.5};
}

}  // namespace

cv::Mat UsualBodyShape() {
  cv::Mat body = cv::Mat::zeros(kWindow, CV_32FC1);
  cv::ellipse(body, {32, 24}, {6, 8}, 0, 0, 360, 1.0, cv::FILLED);
  const std::vector<cv::Point> trunk = {{26, 32}, {38, 32}, {44, 38}, {43, 66}, {21, 66}, {20, 38}};
  const std::vector<cv::Point> legs = {{22, 66}, {42, 66}, {41, 115}, {23, 115}};
  cv::fillPoly(body, std::vector<std::vector<cv::Point>>{trunk}, 1.0);
  cv::fillPoly(body, std::vector<std::vector<cv::Point>>{legs}, 1.0);
  cv::GaussianBlur(body, body, {}, kSoftness);
  return body;
}

cv::Mat PlaceBodyShape(const cv::Mat& shape, const cv::Rect2d& area, const cv::Size& size) {
  cv::Mat placed;
  cv::warpAffine(shape, placed, ToPicture(area), size, cv::INTER_LINEAR);
  return placed;
}

cv::Mat TakeBodyShape(const cv::Mat& mask, const cv::Rect2d& area) {
  cv::Mat likelihood;
  mask.convertTo(likelihood, CV_32F, 1.0 / 255);
  cv::Mat shape;
  cv::warpAffine(likelihood, shape, ToPicture(area), kWindow,
                 cv::INTER_LINEAR | cv::WARP_INVERSE_MAP);
  cv::GaussianBlur(shape, shape, {}, kTakenSoftness);
  return shape;
}

}  // namespace krv
