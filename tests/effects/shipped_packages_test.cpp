// The packages we ship, as a host meets them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "effects/effect_fixture.h"
#include "effects/shipped_package.h"

namespace krv::test {
namespace {

using Json = nlohmann::json;

// The packages that show something without a mask.
std::vector<std::string> PackageNames() {
  std::vector<std::string> names = ShippedPackageNames();
  std::erase_if(names, [](const std::string& name) {
    return ShippedPackage(name).description.contains("input_list");
  });
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
    context_.audio = &noise_.block;
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

  Json description_ = ShippedPackage(GetParam()).description;
  FallingNoise noise_;
  host::MemoryFrame background_{96, 72, kPixel8};
  host::MemoryFrame picture_{96, 72, kPixel8};
};

// Effects that draw a mesh bear the name that chooses their class.
TEST_P(ShippedPackages, AreNamedAfterTheirFolderOrTheirClass) {
  const bool has_mesh = description_.contains("opengl_vert");
  EXPECT_THAT(
      description_["unique_name"].get<std::string>(),
      testing::StartsWith("audio_visualization_" + (has_mesh ? "3d_geometry" : GetParam()) + "_"));
}

TEST_P(ShippedPackages, EveryParameterOnShowChangesThePicture) {
  const Instance effect = host_.Make(ShippedPackage(GetParam()));
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
