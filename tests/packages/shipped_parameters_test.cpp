// The parameters that the shipped packages announce, against the table of uniforms.
#include <gmock/gmock.h>

#include <fstream>
#include <nlohmann/json.hpp>

#include "package_files.h"
#include "packages/uniform_table.h"
#include "plugin_host.h"
#include "shaders/builtin_shaders.h"
#include "support/file_system.h"

namespace krv::test {
namespace {

using host::ParameterListing;
using nlohmann::json;
using ::testing::UnorderedElementsAreArray;

// A shipped package over a built-in shader, as hosts see it.
struct ShippedFigure {
  std::string folder;  // its name
  host::EffectListing effect;
  const TableShader* shader;
  std::string kind;

  // What its kind of figure reads, and the parameter that chooses the kind.
  std::vector<std::string> Wanted() const {
    std::vector<std::string> names = {shader->kind_parameter};
    for (const TableParameter& parameter : shader->parameters) {
      if (parameter.kinds.contains(kind)) names.push_back(parameter.name);
    }
    return names;
  }
};

class ShippedParameters : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string error;
    const auto plugin = host::PluginHost::Create({.plugin = KRV_PLUGIN_FILE}, &error);
    ASSERT_NE(plugin, nullptr) << error;
    ASSERT_TRUE(plugin->RegisterPackages(KRV_PACKAGES, &error)) << error;
    const auto effects = plugin->ListEffects();
    for (const auto& folder : host::FindPackageFolders(KRV_PACKAGES)) {
      Add(Utf8Text(folder.filename()),
          json::parse(std::ifstream(folder / host::kDescriptionFileName)), effects);
    }
    ASSERT_FALSE(figures_.empty());
  }

  // Packages with shaders of their own are not in the table.
  void Add(const std::string& folder, const json& description,
           const std::vector<host::EffectListing>& effects) {
    const std::string shader = description["opengl_frag"][0];
    if (!FindBuiltinShader(shader)) return;
    const TableShader& table = table_.at(shader);
    for (const host::EffectListing& effect : effects) {
      if (effect.unique_name != "audio_visualization_" + folder) continue;
      const ParameterListing* kind = effect.Find(table.kind_parameter);
      ASSERT_NE(kind, nullptr) << folder;
      figures_.push_back(
          {folder, effect, &table, table.kinds.at(static_cast<size_t>(kind->default_number))});
      return;
    }
    ADD_FAILURE() << folder << " is not announced as audio_visualization_" << folder;
  }

  const std::map<std::string, TableShader> table_ = ReadUniformTable(KRV_PACKAGES "/uniforms.json");
  std::vector<ShippedFigure> figures_;
};

TEST_F(ShippedParameters, AreExactlyThoseThatTheirKindReads) {
  for (const ShippedFigure& figure : figures_) {
    std::vector<std::string> names;
    for (const ParameterListing& parameter : figure.effect.parameters) {
      names.push_back(parameter.name);
    }
    EXPECT_THAT(names, UnorderedElementsAreArray(figure.Wanted())) << figure.folder;
  }
}

TEST_F(ShippedParameters, HaveTheTablesKindsAndLimitsWithinTheTables) {
  for (const ShippedFigure& figure : figures_) {
    for (const ParameterListing& parameter : figure.effect.parameters) {
      if (parameter.name == figure.shader->kind_parameter) continue;
      SCOPED_TRACE(figure.folder + ", " + parameter.name);
      const TableParameter& wanted = figure.shader->Find(parameter.name);
      EXPECT_EQ(parameter.kind, wanted.type);
      EXPECT_FALSE(parameter.hidden);
      if (wanted.min_value.is_null()) continue;
      EXPECT_TRUE(parameter.HasRange());
      EXPECT_GE(parameter.minimum, wanted.min_value.get<float>());
      EXPECT_LE(parameter.maximum, wanted.max_value.get<float>());
    }
  }
}

TEST_F(ShippedParameters, HaveDefaultsWithinTheirLimits) {
  for (const ShippedFigure& figure : figures_) {
    for (const ParameterListing& parameter : figure.effect.parameters) {
      if (!parameter.HasRange()) continue;
      EXPECT_GE(parameter.default_number, parameter.minimum)
          << figure.folder << ", " << parameter.name;
      EXPECT_LE(parameter.default_number, parameter.maximum)
          << figure.folder << ", " << parameter.name;
    }
  }
}

TEST_F(ShippedParameters, HideTheOneThatChoosesTheKind) {
  for (const ShippedFigure& figure : figures_) {
    const ParameterListing* kind = figure.effect.Find(figure.shader->kind_parameter);
    ASSERT_NE(kind, nullptr);
    EXPECT_TRUE(kind->hidden) << figure.folder;
    EXPECT_EQ(kind->kind, kKindInt) << figure.folder;
    EXPECT_EQ(kind->minimum, 0) << figure.folder;
    EXPECT_EQ(kind->maximum, figure.shader->kinds.size() - 1) << figure.folder;
  }
}

// Every kind of figure can be had without writing a package.
TEST_F(ShippedParameters, CoverEveryKindOfEveryShader) {
  std::set<std::pair<const TableShader*, std::string>> shipped;
  for (const ShippedFigure& figure : figures_) {
    shipped.emplace(figure.shader, figure.kind);
  }
  size_t kinds = 0;
  for (const auto& [name, shader] : table_) kinds += shader.kinds.size();
  EXPECT_EQ(shipped.size(), kinds);
}

}  // namespace
}  // namespace krv::test
