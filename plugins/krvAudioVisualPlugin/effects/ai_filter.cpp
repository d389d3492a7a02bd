#include "effects/ai_filter.h"

#include <array>
#include <string>
#include <utility>

#include "boundary/plugin_registry.h"
#include "krv/suites.h"

namespace krv {
namespace {

// UTF-8; empty when the host does not say.
std::string HostPath(HostPathKind kind) {
  HostUtilSuite* host = PluginRegistry::Instance().host_util_suite;
  if (host == nullptr) return {};
  std::array<char, 512> buffer{};
  host->GetHostPath(kind, buffer.data(), buffer.size());
  buffer.back() = '\0';
  return buffer.data();
}

// Empty when the host names no folder at all: the file is never looked for at the root of a disk.
std::string LibraryPath() {
  std::string folder = HostPath(kHostPathPlugins);
  if (folder.empty()) {
    folder = HostPath(kHostPathInstallation);
    if (folder.empty()) return {};
    folder += "/krvPlugin";
  }
  return folder + "/" + kAiFilterFileName;
}

}  // namespace

AiFilter& AiFilter::Instance() {
  static AiFilter& filter = *new AiFilter;
  return filter;
}

// Leaves everything as it was, the library unloaded, when there is no filter to be had.
bool AiFilter::Load() {
  const std::string path = LibraryPath();
  if (path.empty()) return false;
  auto library = platform::DynamicLibrary::Open(path);
  auto* create =
      reinterpret_cast<CreateAiFilterFunction*>(library.Symbol("CreateNLEAIEffectFilterFromGUID"));
  auto* transform =
      reinterpret_cast<AiFilterTransformFunction*>(library.Symbol("NLEEffectFilterTransform"));
  if (create == nullptr || transform == nullptr) return false;
  filter_ = create(kAiFilterGuid, HostPath(kHostPathAiModels).c_str());
  if (filter_ == nullptr) return false;
  library_ = std::move(library);
  transform_ = transform;
  return true;
}

cv::Mat AiFilter::Run(const cv::Mat& picture) {
  if (picture.empty()) return {};
  const std::lock_guard lock(mutex_);
  if (filter_ == nullptr && !Load()) return {};
  // A filter that writes nothing gives an empty mask.
  cv::Mat mask = cv::Mat::zeros(picture.rows, picture.cols, CV_8UC4);
  const auto stride = static_cast<int32_t>(picture.step[0]);
  const int32_t result = transform_(
      filter_, mask.data, mask.cols, mask.rows, static_cast<int32_t>(mask.step[0]), picture.data,
      picture.cols, picture.rows, stride, picture.data, picture.cols, picture.rows, stride);
  return result == 0 ? mask : cv::Mat();
}

}  // namespace krv
