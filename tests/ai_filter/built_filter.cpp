#include "ai_filter/built_filter.h"

#include <stdexcept>
#include <vector>

#include "support/loaded_library.h"

namespace krv::test {
namespace {

BuiltFilter Load() {
  void* library = LoadForEver(BuiltFilter::Path());
  return {reinterpret_cast<CreateAiFilterFunction*>(
              FindFunction(library, "CreateNLEAIEffectFilterFromGUID")),
          reinterpret_cast<AiFilterTransformFunction*>(
              FindFunction(library, "NLEEffectFilterTransform"))};
}

}  // namespace

const BuiltFilter& BuiltFilter::Get() {
  static const BuiltFilter library = Load();
  return library;
}

std::string BuiltFilter::Path() { return KRV_AI_FILTER_FILE; }

void* MakeFilter(const std::string& models) {
  void* filter = BuiltFilter::Get().create(kAiFilterGuid, models.c_str());
  if (filter == nullptr) throw std::runtime_error("the library makes no filter");
  return filter;
}

cv::Mat MaskOf(void* filter, const cv::Mat& picture) {
  // Neither empty nor a mask.
  cv::Mat out(picture.size(), CV_8UC4, cv::Scalar::all(77));
  const auto stride = static_cast<int32_t>(picture.step[0]);
  const int32_t code = BuiltFilter::Get().transform(
      filter, out.data, out.cols, out.rows, static_cast<int32_t>(out.step[0]), picture.data,
      picture.cols, picture.rows, stride, picture.data, picture.cols, picture.rows, stride);
  if (code != 0) throw std::runtime_error("the filter fails");
  std::vector<cv::Mat> channels;
  cv::split(out, channels);
  for (const cv::Mat& channel : channels) {
    const bool same = cv::countNonZero(channel != channels[3]) == 0;
    const int marked = cv::countNonZero(channel);
    if (!same || cv::countNonZero(channel == 255) != marked) {
      throw std::runtime_error("what the filter writes is not a mask");
    }
  }
  return channels[3];
}

double Overlap(const cv::Mat& a, const cv::Mat& b) {
  const int either = cv::countNonZero(a | b);
  return either == 0 ? 0 : static_cast<double>(cv::countNonZero(a & b)) / either;
}

}  // namespace krv::test
