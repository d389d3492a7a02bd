#include "gallery/contact_sheet.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>

namespace krv::tool {
namespace {

// Pixels.
constexpr int kCellWidth = 440;
constexpr int kStillHeight = 248;
constexpr int kNameHeight = 46;
constexpr int kMargin = 28;
constexpr int kGap = 20;
constexpr auto kFont = cv::FONT_HERSHEY_SIMPLEX;
constexpr int kSharper = 4;  // text is drawn this much larger, its edges are smoother that way

const cv::Scalar kBackground(20, 15, 14);  // blue, green, red
const cv::Scalar kText(238, 232, 230);

int Columns(size_t entries) {
  const int square = static_cast<int>(std::ceil(std::sqrt(static_cast<double>(entries))));
  return std::clamp(square, 1, 4);
}

// Scaled to fit, with the background around it.
void DrawStill(const host::Picture& still, const cv::Mat& place) {
  const cv::Mat picture(still.height(), still.width(), CV_8UC4, const_cast<uint8_t*>(still.Row(0)),
                        static_cast<size_t>(still.stride()));
  const double scale = std::min(static_cast<double>(place.cols) / still.width(),
                                static_cast<double>(place.rows) / still.height());
  const cv::Size size(std::min(place.cols, cvRound(still.width() * scale)),
                      std::min(place.rows, cvRound(still.height() * scale)));
  cv::Mat target = place(
      cv::Rect(cv::Point((place.cols - size.width) / 2, (place.rows - size.height) / 2), size));
  cv::Mat opaque;
  cv::cvtColor(picture, opaque, cv::COLOR_BGRA2BGR);
  cv::resize(opaque, target, size, 0, 0, scale < 1 ? cv::INTER_AREA : cv::INTER_CUBIC);
}

void DrawName(const std::string& name, const cv::Mat& place) {
  cv::Mat large(place.size() * kSharper, CV_8UC3, kBackground);
  const int thickness = static_cast<int>(1.3 * kSharper);
  double size = 0.68 * kSharper;
  const int width = cv::getTextSize(name, kFont, size, thickness, nullptr).width;
  size *= std::min(1.0, static_cast<double>(large.cols) / (width + 2 * thickness));
  const cv::Point start(kSharper, large.rows - 16 * kSharper);
  cv::putText(large, name, start, kFont, size, kText, thickness, cv::LINE_AA);
  cv::resize(large, place, place.size(), 0, 0, cv::INTER_AREA);
}

}  // namespace

host::Picture MakeContactSheet(const std::vector<SheetEntry>& entries) {
  const int columns = Columns(entries.size());
  const int rows = (static_cast<int>(entries.size()) + columns - 1) / columns;
  const cv::Size step(kCellWidth + kGap, kStillHeight + kNameHeight + kGap);
  cv::Mat sheet(rows * step.height - kGap + 2 * kMargin, columns * step.width - kGap + 2 * kMargin,
                CV_8UC3, kBackground);
  for (size_t i = 0; i < entries.size(); ++i) {
    const int column = static_cast<int>(i) % columns;
    const int row = static_cast<int>(i) / columns;
    const cv::Point corner(kMargin + column * step.width, kMargin + row * step.height);
    DrawStill(entries[i].still, sheet(cv::Rect(corner, cv::Size(kCellWidth, kStillHeight))));
    DrawName(entries[i].name,
             sheet(cv::Rect(corner.x, corner.y + kStillHeight, kCellWidth, kNameHeight)));
  }
  host::Picture picture(sheet.cols, sheet.rows);
  cv::Mat target(sheet.rows, sheet.cols, CV_8UC4, picture.Row(0),
                 static_cast<size_t>(picture.stride()));
  cv::cvtColor(sheet, target, cv::COLOR_BGR2BGRA);
  return picture;
}

}  // namespace krv::tool
