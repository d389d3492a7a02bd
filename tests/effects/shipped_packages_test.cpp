// The packages we ship, as a host meets them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "audio_block.h"
#include "effects/effect_fixture.h"

namespace krv::test {
namespace {

using Json = nlohmann::json;

constexpr int32_t kSampleFrames = 1764;

// Sound whose spectrum falls from loud lows to quiet highs.
std::vector<int16_t> FallingNoise() {
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

std::string ContentsOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

Json DescriptionOf(const std::string& name) {
  return Json::parse(ContentsOf(std::filesystem::path(KRV_PACKAGES) / name / "description.json"));
}

// The shader files that lie in a package's folder.
std::map<std::string, std::string> FilesOf(const std::string& name) {
  std::map<std::string, std::string> files;
  const std::filesystem::path folder = std::filesystem::path(KRV_PACKAGES) / name;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() == ".json") continue;
    files[entry.path().filename().string()] = ContentsOf(entry.path());
  }
  return files;
}

// The packages that show something without a mask.
std::vector<std::string> PackageNames() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(KRV_PACKAGES)) {
    if (!entry.is_directory()) continue;
    const std::string name = entry.path().filename().string();
    if (!DescriptionOf(name).contains("input_list")) names.push_back(name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

// Other values of a parameter than its default: its limits and one between them, since the limits
// of a turn are the same.
std::vector<ParameterValue> OtherValues(const Json& parameter) {
  const int32_t kind = parameter["type"];
  if (kind == kKindText) return {Text("2,16777215,0;255,100")};
  if (kind == kKindBool) return {Bool(parameter["default_value"].get<bool>() ? 0 : 1)};
  const double least = parameter["min_value"];
  const double most = parameter["max_value"];
  std::vector<ParameterValue> values;
  for (const double value : {least, most, least + 0.37 * (most - least)}) {
    values.push_back(kind == kKindFloat ? Float(static_cast<float>(value))
                                        : Int(static_cast<int32_t>(value)));
  }
  return values;
}

class ShippedPackages : public EffectTest, public testing::WithParamInterface<std::string> {
 protected:
  ShippedPackages() {
    context_.output = &picture_;
    context_.input = &background_;
    context_.audio = &block_;
    context_.index = 40;
  }

  std::vector<uint8_t> Drawn(KRVEffect& effect) {
    EXPECT_EQ(ProcessFrame(effect, context_), kOk);
    return BytesOf(picture_);
  }

  // Whether a parameter's other values change a frame, the other parameters being as they are.
  bool Matters(KRVEffect& effect, const Json& parameter) {
    const std::string name = parameter["name"];
    const auto before = context_.answers;
    const std::vector<uint8_t> reference = Drawn(effect);
    bool changes = false;
    for (const ParameterValue& value : OtherValues(parameter)) {
      context_.answers[name] = value;
      changes = changes || Drawn(effect) != reference;
    }
    context_.answers = before;
    return changes;
  }

  // The settings that some parameters need before they show.
  static std::vector<std::map<std::string, ParameterValue>> Settings() {
    return {{},
            {{"single_color", Int(1)}},
            {{"use_gradient_color", Bool(0)}},
            {{"glow", Int(1)}},
            {{"manual_rotate", Int(1)}},
            {{"pulse_fill", Bool(0)}},
            {{"rotate_z", Int(30)}},
            {{"rotate_speed", Float(1)}},
            {{"audio_mirror", Bool(0)}},  // else flipping a figure whose halves are alike is lost
            {{"direction", Int(0)}}};     // likewise for its upper and lower halves
  }

  Json description_ = DescriptionOf(GetParam());
  std::vector<int16_t> samples_ = FallingNoise();
  host::BorrowedAudioBlock block_{
      {.samples = samples_.data(), .sample_frames = kSampleFrames, .channels = 1}};
  host::MemoryFrame background_{96, 72, kPixel8};
  host::MemoryFrame picture_{96, 72, kPixel8};
};

// Effects that draw a mesh bear the name that chooses their class.
TEST_P(ShippedPackages, AreNamedAfterTheirFolderOrTheirClass) {
  const bool has_mesh = description_.contains("opengl_vert");
  EXPECT_EQ(description_["unique_name"],
            "audio_visualization_" + (has_mesh ? "3d_geometry" : GetParam()));
}

TEST_P(ShippedPackages, EveryParameterOnShowChangesThePicture) {
  Package package;
  package.description = description_;
  package.description["unique_name"] =
      description_["unique_name"].get<std::string>() + "_under_test";
  package.files = FilesOf(GetParam());
  const Instance effect = host_.Make(std::move(package));
  for (const Json& parameter : description_["params"]) {
    if (parameter.value("ui_type", "") == "NoShow") continue;
    bool matters = false;
    for (const auto& setting : Settings()) {
      context_.answers = setting;
      matters = matters || Matters(*effect, parameter);
    }
    EXPECT_TRUE(matters) << parameter["name"];
  }
}

INSTANTIATE_TEST_SUITE_P(All, ShippedPackages, testing::ValuesIn(PackageNames()),
                         [](const auto& test) { return test.param; });

}  // namespace
}  // namespace krv::test
