#include "studio/live_package.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <utility>

#include "check/package_check.h"
#include "package_files.h"
#include "platform/file_system.h"
#include "platform/stdout_capture.h"
#include "utf8_path.h"

namespace krv::studio {
namespace {

// A text of the description; empty when there is none.
std::string DescriptionText(const std::filesystem::path& folder, const char* key) {
  std::ifstream file(host::platform::OpenablePath(folder / host::kDescriptionFileName),
                     std::ios::binary);
  const auto description = nlohmann::json::parse(file, nullptr, false);
  if (!description.is_object() || !description.contains(key)) return {};
  const auto& value = description[key];
  return value.is_string() ? value.get<std::string>() : std::string();
}

// The plug-in keeps the first package of a name for the whole process.
std::string NewSuffix() {
  static int count = 0;
  return ".studio" + std::to_string(++count);
}

}  // namespace

LivePackage::LivePackage(std::shared_ptr<host::PluginHost> host, std::filesystem::path folder)
    : host_(std::move(host)), folder_(std::move(folder)), watch_(folder_) {}

bool LivePackage::Refresh() {
  if (!watch_.Changed()) return false;
  Load();
  return true;
}

bool LivePackage::Make(const std::filesystem::path& folder, host::PackageChanges changes,
                       Version* version, std::string* error) {
  changes.name_suffix = NewSuffix();
  version->copy = host::PackageCopy::Create(folder, changes, error);
  if (version->copy == nullptr) return false;
  if (!host_->RegisterPackages(version->copy->folder(), error)) return false;
  // What drivers say about shaders that work is not for the terminal.
  const auto capture = host::platform::StdoutCapture::Start(error);
  version->session = host::EffectSession::Create(host_, version->copy->unique_name(), error);
  return version->session != nullptr;
}

void LivePackage::Load() {
  findings_ = tool::PackageChecker(host_).Check(folder_);
  if (tool::HasErrors(findings_)) return;
  std::string error;
  // Further changes of the files do not reach what was found to work.
  host::PackageChanges changes;
  changes.name_suffix = NewSuffix();
  auto snapshot = host::PackageCopy::Create(folder_, changes, &error);
  if (snapshot == nullptr) return Report(error);
  std::swap(snapshot_, snapshot);
  if (!MakeShown(&error)) {
    std::swap(snapshot_, snapshot);
    return Report(error);
  }
  own_quality_ = DescriptionText(snapshot_->folder(), "quality");
  unique_name_ = DescriptionText(folder_, "unique_name");
}

bool LivePackage::MakeShown(std::string* error) {
  host::PackageChanges changes;
  if (!quality_.empty()) changes.quality = quality_;
  Version version;
  if (!Make(snapshot_->folder(), changes, &version, error)) return false;
  session_ = std::move(version.session);
  shown_ = std::move(version.copy);
  return true;
}

void LivePackage::SetQuality(const std::string& quality) {
  if (quality == quality_) return;
  quality_ = quality;
  std::string error;
  if (snapshot_ != nullptr && !MakeShown(&error)) Report(error);
}

std::unique_ptr<host::EffectSession> LivePackage::MakeSession(bool without_blend,
                                                              std::string* error) {
  if (snapshot_ == nullptr) {
    *error = "there is no version of the package that works";
    return nullptr;
  }
  host::PackageChanges changes;
  if (without_blend) changes.without_blend = true;
  Version version;
  if (!Make(snapshot_->folder(), changes, &version, error)) return nullptr;
  exported_ = std::move(version.copy);
  return std::move(version.session);
}

void LivePackage::Report(const std::string& message) {
  findings_.push_back(
      {.file = host::Utf8(folder_ / host::kDescriptionFileName), .message = message});
}

}  // namespace krv::studio
