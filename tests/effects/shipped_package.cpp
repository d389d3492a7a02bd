#include "effects/shipped_package.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace krv::test {
namespace {

constexpr int32_t kSampleFrames = 1764;

std::string ContentsOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<int16_t> MakeNoise() {
  std::vector<int16_t> samples;
  uint32_t state = 1;
  double value = 0;
  for (int32_t i = 0; i < kSampleFrames; ++i) {
    state = state * 1103515245 + 12345;
    value = 0.9 * value + 0.1 * (static_cast<int32_t>(state >> 16) - 0x8000);
    samples.push_back(static_cast<int16_t>(value));
  }
  return samples;
}

}  // namespace

std::vector<std::string> ShippedPackageNames() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(KRV_PACKAGES)) {
    if (entry.is_directory()) names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

Package ShippedPackage(const std::string& folder) {
  Package package;
  for (const auto& entry :
       std::filesystem::directory_iterator(std::filesystem::path(KRV_PACKAGES) / folder)) {
    const std::string name = entry.path().filename().string();
    if (name == "description.json") {
      package.description = nlohmann::json::parse(ContentsOf(entry.path()));
    } else {
      package.files[name] = ContentsOf(entry.path());
    }
  }
  static int made = 0;  // the library keeps the first package of a name
  auto& unique_name = package.description["unique_name"];
  unique_name = unique_name.get<std::string>() + "_" + std::to_string(++made);
  return package;
}

FallingNoise::FallingNoise()
    : samples(MakeNoise()),
      block({.samples = samples.data(), .sample_frames = kSampleFrames, .channels = 1}) {}

}  // namespace krv::test
