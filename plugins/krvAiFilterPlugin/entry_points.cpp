// The functions that the library exports.
#include <cstring>
#include <memory>
#include <mutex>
#include <opencv2/core.hpp>
#include <utility>
#include <vector>

#include "krv/ai_filter.h"
#include "person_filter.h"

namespace krv {
namespace {

enum FilterCode : int32_t { kFilterOk = 0, kFilterFailed = 1, kFilterBadArgument = 2 };

bool IsPicture(const uint8_t* pixels, int32_t width, int32_t height, int32_t stride) {
  return pixels != nullptr && width > 0 && height > 0 && stride >= int64_t{width} * 4;
}

// A header over the caller's pixels. The input's are not written.
cv::Mat View(const uint8_t* pixels, int32_t width, int32_t height, int32_t stride) {
  return {height, width, CV_8UC4, const_cast<uint8_t*>(pixels), static_cast<size_t>(stride)};
}

// Filters live until the process ends; the list is never destroyed.
void* Keep(std::unique_ptr<PersonFilter> filter) {
  static std::mutex mutex;
  static auto* filters = new std::vector<std::unique_ptr<PersonFilter>>;
  const std::lock_guard lock(mutex);
  return filters->emplace_back(std::move(filter)).get();
}

}  // namespace
}  // namespace krv

void* CreateNLEAIEffectFilterFromGUID(const char* guid, const char* folder) {
  if (guid == nullptr || std::strcmp(guid, krv::kAiFilterGuid) != 0) return nullptr;
  try {
    return krv::Keep(std::make_unique<krv::PersonFilter>(folder != nullptr ? folder : ""));
  } catch (...) {
    return nullptr;
  }
}

int32_t NLEEffectFilterTransform(void* filter, uint8_t* out, int32_t out_width, int32_t out_height,
                                 int32_t out_stride, const uint8_t* in, int32_t in_width,
                                 int32_t in_height, int32_t in_stride, const uint8_t* in2,
                                 int32_t in2_width, int32_t in2_height, int32_t in2_stride) {
  if (filter == nullptr || !krv::IsPicture(out, out_width, out_height, out_stride) ||
      !krv::IsPicture(in, in_width, in_height, in_stride) ||
      !krv::IsPicture(in2, in2_width, in2_height, in2_stride)) {
    return krv::kFilterBadArgument;
  }
  try {
    cv::Mat mask = krv::View(out, out_width, out_height, out_stride);
    static_cast<krv::PersonFilter*>(filter)->Transform(
        krv::View(in, in_width, in_height, in_stride), mask);
    return krv::kFilterOk;
  } catch (...) {
    return krv::kFilterFailed;
  }
}
