#include "packages/golden_pictures.h"

#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "package_files.h"
#include "utf8_path.h"

namespace krv::test {
namespace {

constexpr int kWidth = 320;
constexpr int kHeight = 180;

}  // namespace

GoldenRenderer::GoldenRenderer(const std::filesystem::path& plugin,
                               const std::filesystem::path& packages)
    : packages_(packages), scene_(kWidth, kHeight) {
  std::string error;
  plugin_ = host::PluginHost::Create({.plugin = plugin}, &error);
  if (plugin_ == nullptr || !plugin_->RegisterPackages(packages, &error)) {
    throw std::runtime_error(error);
  }
}

std::vector<std::string> GoldenRenderer::Names() const {
  std::vector<std::string> names;
  for (const auto& folder : host::FindPackageFolders(packages_)) {
    names.push_back(host::Utf8(folder.filename()));
  }
  return names;
}

host::Picture GoldenRenderer::Render(const std::string& name) {
  const auto file = packages_ / name / host::kDescriptionFileName;
  const auto description = nlohmann::json::parse(std::ifstream(file));
  std::string error;
  const auto session = host::EffectSession::Create(
      plugin_, description.at("unique_name").get<std::string>(), &error);
  if (session == nullptr) throw std::runtime_error(error);
  return scene_.Render(session.get());
}

bool PictureDifference::WithinTolerance(const host::Picture& picture) const {
  return same_size && pixels <= picture.width() * picture.height() / 1000;
}

PictureDifference Compare(const host::Picture& one, const host::Picture& other) {
  PictureDifference difference;
  difference.same_size = one.width() == other.width() && one.height() == other.height();
  if (!difference.same_size) return difference;
  for (int y = 0; y < one.height(); ++y) {
    for (int x = 0; x < one.width(); ++x) {
      int most = 0;
      for (int channel = 0; channel < 4; ++channel) {
        most = std::max(most, std::abs(one.Pixel(x, y)[channel] - other.Pixel(x, y)[channel]));
      }
      if (most > kGoldenTolerance) ++difference.pixels;
      if (most <= difference.worst) continue;
      difference.worst = most;
      difference.x = x;
      difference.y = y;
    }
  }
  return difference;
}

std::string ToText(const PictureDifference& difference) {
  if (!difference.same_size) return "the size differs";
  return std::to_string(difference.pixels) + " pixels differ, by up to " +
         std::to_string(difference.worst) + " at (" + std::to_string(difference.x) + ", " +
         std::to_string(difference.y) + ")";
}

}  // namespace krv::test
