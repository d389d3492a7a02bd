// The table of uniforms against the shaders.
#include <gmock/gmock.h>

#include <array>
#include <cstring>
#include <sstream>

#include "packages/package_scene.h"
#include "packages/uniform_table.h"
#include "plugin_host.h"
#include "shaders/builtin_shaders.h"
#include "support/scratch_folder.h"

namespace krv::test {
namespace {

using host::EffectSession;
using host::HostValue;
using nlohmann::json;
using ::testing::UnorderedElementsAreArray;

using Values = std::map<std::string, json>;

std::map<std::string, TableShader> Table() {
  return ReadUniformTable(KRV_PACKAGES "/uniforms.json");
}

HostValue ToHostValue(int type, const json& value) {
  switch (type) {
    case kKindFloat:
      return value.get<float>();
    case kKindBool:
      return value.get<bool>();
    case kKindText:
      return value.get<std::string>();
    default:
      return value.get<int32_t>();
  }
}

std::shared_ptr<host::PluginHost> StartPlugin() {
  std::string error;
  auto plugin = host::PluginHost::Create({.plugin = KRV_PLUGIN_FILE}, &error);
  if (plugin == nullptr) throw std::runtime_error(error);
  return plugin;
}

// A built-in shader with every parameter that the table has for it, the ones that only other kinds
// read included.
class Figure {
 public:
  Figure(const std::string& file_name, const TableShader& shader) : shader_(shader) {
    json params = json::array();
    params.push_back({{"name", shader.kind_parameter}, {"type", kKindInt}, {"default_value", 0}});
    for (const TableParameter& parameter : shader.parameters) {
      params.push_back({{"name", parameter.name},
                        {"type", parameter.type},
                        {"default_value", parameter.example}});
    }
    const json description = {{"effect_type", "audio_visualization"},
                              {"unique_name", file_name},
                              {"quality", "high"},
                              {"opengl_frag", {file_name}},
                              {"params", params}};
    folder_.Write("description.json", description.dump());
    std::string error;
    const auto plugin = StartPlugin();
    if (plugin->RegisterPackages(folder_.path(), &error)) {
      session_ = EffectSession::Create(plugin, file_name, &error);
    }
    if (session_ == nullptr) throw std::runtime_error(error);
  }

  // One frame of a kind with these values, and the table's first examples for the rest.
  host::Picture Render(int kind, const Values& values) {
    for (const TableParameter& parameter : shader_.parameters) {
      const auto found = values.find(parameter.name);
      const json& value = found == values.end() ? parameter.example : found->second;
      session_->parameters().Set(parameter.name, ToHostValue(parameter.type, value));
    }
    session_->parameters().Set(shader_.kind_parameter, kind);
    return scene_.Render(session_.get());
  }

  // The middle of the pixels that the first kind of figure changes.
  std::array<double, 2> MiddleOf(const Values& values) {
    const host::Picture frame = Render(0, values);
    double count = 0;
    std::array<double, 2> sum{};
    for (int y = 0; y < frame.height(); ++y) {
      for (int x = 0; x < frame.width(); ++x) {
        if (std::memcmp(frame.Pixel(x, y), scene_.picture().Pixel(x, y), 4) == 0) continue;
        ++count;
        sum[0] += x;
        sum[1] += y;
      }
    }
    return {sum[0] / count, sum[1] / count};
  }

  // Whether the two examples of a parameter look different with these values of others.
  bool Shows(int kind, const TableParameter& parameter, Values values) {
    values[parameter.name] = parameter.example;
    const host::Picture one = Render(kind, values);
    values[parameter.name] = parameter.other_example;
    return !SamePixels(one, Render(kind, values));
  }

 private:
  static bool SamePixels(const host::Picture& a, const host::Picture& b) {
    for (int y = 0; y < a.height(); ++y) {
      if (std::memcmp(a.Row(y), b.Row(y), static_cast<size_t>(a.width()) * 4) != 0) return false;
    }
    return true;
  }

  const TableShader& shader_;
  ScratchFolder folder_;
  PackageScene scene_{160, 90};
  std::unique_ptr<EffectSession> session_;
};

class UniformTableTest : public ::testing::TestWithParam<const char*> {
 protected:
  const std::map<std::string, TableShader> table_ = Table();
  const TableShader& shader_ = table_.at(GetParam());
};

TEST_P(UniformTableTest, HoldsExactlyTheUniformsThatTheShaderDeclares) {
  const auto found = FindBuiltinShader(GetParam());
  ASSERT_TRUE(found.has_value());
  std::istringstream source{std::string(*found)};
  std::map<std::string, std::string> declared;
  for (std::string line; std::getline(source, line);) {
    std::istringstream words(line);
    std::string keyword, type, name;
    if (words >> keyword >> type >> name && keyword == "uniform") {
      declared.emplace(name.substr(0, name.find(';')), type);
    }
  }
  EXPECT_THAT(declared, UnorderedElementsAreArray(shader_.uniforms));
}

TEST_P(UniformTableTest, EachKindShowsExactlyTheParametersThatItReads) {
  Figure figure(GetParam(), shader_);
  for (size_t kind = 0; kind < shader_.kinds.size(); ++kind) {
    for (const TableParameter& parameter : shader_.parameters) {
      EXPECT_EQ(figure.Shows(static_cast<int>(kind), parameter, parameter.needs),
                parameter.kinds.contains(shader_.kinds[kind]))
          << shader_.kinds[kind] << ", " << parameter.name;
    }
  }
}

TEST_P(UniformTableTest, AParameterShowsNothingWithoutWhatItNeeds) {
  Figure figure(GetParam(), shader_);
  for (size_t kind = 0; kind < shader_.kinds.size(); ++kind) {
    for (const TableParameter& parameter : shader_.parameters) {
      for (const auto& [name, needed] : parameter.needs) {
        const TableParameter& other = shader_.Find(name);
        Values values = parameter.needs;
        values[name] = other.example == needed ? other.other_example : other.example;
        EXPECT_FALSE(figure.Shows(static_cast<int>(kind), parameter, values))
            << shader_.kinds[kind] << ", " << parameter.name << " without " << name;
      }
    }
  }
}

TEST_P(UniformTableTest, ExamplesLieWithinTheLimits) {
  for (const TableParameter& parameter : shader_.parameters) {
    if (parameter.min_value.is_null()) continue;
    for (const json& value : {parameter.example, parameter.other_example}) {
      EXPECT_GE(value, parameter.min_value) << parameter.name;
      EXPECT_LE(value, parameter.max_value) << parameter.name;
    }
  }
}

// A small figure, so that it stays within the frame of 160 x 90 pixels.
TEST_P(UniformTableTest, AStepOfThePositionIsTwoPercentOfTheFrame) {
  Figure figure(GetParam(), shader_);
  const auto middle_at = [&figure](const char* parameter, double position) {
    return figure.MiddleOf(
        {{"scale_x", 0.2}, {"scale_y", 0.2}, {"radius", 0.6}, {"glow", 0}, {parameter, position}});
  };
  EXPECT_EQ(shader_.Find("position_x").unit, "2 % of the width");
  EXPECT_EQ(shader_.Find("position_y").unit, "2 % of the height");
  EXPECT_NEAR(middle_at("position_x", 55)[0] - middle_at("position_x", 45)[0], 0.2 * 160, 2);
  const double down = middle_at("position_y", 55)[1] - middle_at("position_y", 45)[1];
  const bool is_flat = shader_.kinds.front() == "bars";
  EXPECT_NEAR(is_flat ? -down : down, 0.2 * 90, 2);
}

INSTANTIATE_TEST_SUITE_P(Shaders, UniformTableTest,
                         ::testing::Values("audio_visualization_geometry.frag",
                                           "audio_visualization_halo_geometry.frag",
                                           "audio_visualization_halo_spectrum.frag"),
                         [](const auto& shader) {
                           const std::string name = shader.param;
                           return name.substr(0, name.find('.'));
                         });

}  // namespace
}  // namespace krv::test
