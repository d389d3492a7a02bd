#include "effects/mask_box.h"

#include <array>
#include <atomic>
#include <cstdint>

namespace krv {
namespace {

constexpr uint8_t kLargestOutside = 5;  // of the fourth channel

bool IsMask(const cv::Vec4b& pixel) { return pixel[3] > kLargestOutside; }

// The column of the row's first mask pixel before `end`, or `end`.
int FirstInRow(const cv::Vec4b* row, int end) {
  int column = 0;
  while (column < end && !IsMask(row[column])) ++column;
  return column;
}

// The column of the row's last mask pixel after `end`, or `end`.
int LastInRow(const cv::Vec4b* row, int columns, int end) {
  int column = columns - 1;
  while (column > end && !IsMask(row[column])) --column;
  return column;
}

// Each is -1 when there is no mask pixel.

int FirstRow(const cv::Mat& mask) {
  for (int row = 0; row < mask.rows; ++row) {
    if (FirstInRow(mask.ptr<cv::Vec4b>(row), mask.cols) < mask.cols) return row;
  }
  return -1;
}

int LastRow(const cv::Mat& mask) {
  for (int row = mask.rows - 1; row >= 0; --row) {
    if (FirstInRow(mask.ptr<cv::Vec4b>(row), mask.cols) < mask.cols) return row;
  }
  return -1;
}

// Row by row, as the pixels lie in memory, and only as far as a row can still say something new.
int FirstColumn(const cv::Mat& mask) {
  int first = mask.cols;
  for (int row = 0; row < mask.rows; ++row) first = FirstInRow(mask.ptr<cv::Vec4b>(row), first);
  return first < mask.cols ? first : -1;
}

int LastColumn(const cv::Mat& mask) {
  int last = -1;
  for (int row = 0; row < mask.rows; ++row) {
    last = LastInRow(mask.ptr<cv::Vec4b>(row), mask.cols, last);
  }
  return last;
}

}  // namespace

MaskBox FindMaskBox(const cv::Mat& mask) {
  constexpr std::array<int (*)(const cv::Mat&), 4> kScans = {FirstRow, LastRow, FirstColumn,
                                                             LastColumn};
  std::array<int, kScans.size()> found{};
  // OpenCV's own threads, which outlive the frame, instead of new ones. It hands their results over
  // where the thread sanitizer does not see it; the counter does so once more.
  std::atomic<int> finished = 0;
  cv::parallel_for_(cv::Range(0, kScans.size()), [&](const cv::Range& scans) {
    for (int i = scans.start; i < scans.end; ++i) found[i] = kScans[i](mask);
    ++finished;
  });
  static_cast<void>(finished.load());
  const auto [top, bottom, left, right] = found;
  if (top < 0) return {};
  return {static_cast<float>(left), static_cast<float>(top), static_cast<float>(right - left + 1),
          static_cast<float>(bottom - top + 1)};
}

}  // namespace krv
