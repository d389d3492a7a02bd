// docs/uniforms.md against packages/uniforms.json, which other tests hold against the shaders, and
// its pictures against what the script draws on them.
#include <gmock/gmock.h>

#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

#include "guides/guide_text.h"

namespace krv::test {
namespace {

using nlohmann::json;
using ::testing::UnorderedElementsAreArray;

using Rows = std::set<std::string>;  // "name, type, unit, range"

json Table() { return json::parse(std::ifstream(KRV_SOURCES "/packages/uniforms.json")); }

Guide UniformsGuide() { return Guide(KRV_SOURCES "/docs/uniforms.md"); }

std::string TypeText(const json& entry) {
  static const std::map<int, std::string> types = {
      {3, "int"}, {5, "float"}, {7, "bool"}, {8, "text"}, {15, "colour"}};
  return entry.contains("glsl") ? entry["glsl"].get<std::string>() : types.at(entry.at("type"));
}

std::string RangeText(const json& entry) {
  if (!entry.contains("min_value")) return "";
  if (!entry.contains("max_value")) return entry["min_value"].dump() + " or more";
  return entry["min_value"].dump() + " to " + entry["max_value"].dump();
}

void Add(const json& entries, Rows* rows) {
  for (const json& entry : entries) {
    rows->insert(entry.at("name").get<std::string>() + ", " + TypeText(entry) + ", " +
                 entry.value("unit", "") + ", " + RangeText(entry));
  }
}

// What the table of uniforms says.
Rows KnownRows() {
  const json table = Table();
  Rows rows;
  for (const char* key : {"frame", "common"}) Add(table.at(key), &rows);
  for (const json& set : table.at("sets")) Add(set, &rows);
  for (const json& kind : table.at("kinds_of_effects")) Add(kind.at("uniforms"), &rows);
  for (const json& shader : table.at("shaders")) Add(shader.at("parameters"), &rows);
  return rows;
}

// What the guide's tables of uniforms say.
Rows GuideRows() {
  Rows rows;
  const Guide guide = UniformsGuide();
  for (const auto& cells : guide.rows()) {
    if (cells.size() != 5 || !cells[0].starts_with('`')) continue;
    rows.insert(cells[0].substr(1, cells[0].size() - 2) + ", " + cells[1] + ", " + cells[2] + ", " +
                cells[3]);
    EXPECT_FALSE(cells[4].empty()) << cells[0];
  }
  return rows;
}

// The uniforms on the sheets of pictures.
std::map<std::string, std::set<std::string>> SheetUniforms() {
  std::map<std::string, std::set<std::string>> sheets;
  std::ifstream file(KRV_SOURCES "/scripts/uniform_pictures/sheets.sh");
  std::set<std::string>* sheet = nullptr;
  for (std::string line; std::getline(file, line);) {
    std::istringstream words(line);
    std::string command, name;
    words >> command >> name;
    if (command == "sheet") sheet = &sheets[name];
    if (command != "row") continue;
    std::istringstream names(name);
    for (std::string uniform; std::getline(names, uniform, ',');) sheet->insert(uniform);
  }
  return sheets;
}

TEST(UniformsGuide, SaysOfEveryUniformWhatTheTableSays) {
  EXPECT_THAT(GuideRows(), UnorderedElementsAreArray(KnownRows()));
}

// Uniforms of an effect that its blend shader does not get, although it gets others of the effect.
Rows UniformsOfPassesAlone() {
  Rows names;
  const json table = Table();
  for (const json& kind : table.at("kinds_of_effects")) {
    Rows passes_alone;
    const json& uniforms = kind.at("uniforms");
    for (const json& entry : uniforms) {
      if (entry.at("in") == json{"passes"})
        passes_alone.insert("`" + entry.at("name").get<std::string>() + "`");
    }
    if (passes_alone.size() < uniforms.size()) names.merge(passes_alone);
  }
  return names;
}

TEST(UniformsGuide, SaysWhatOfAnEffectItsBlendShaderDoesNotGet) {
  Rows said;
  const Guide guide = UniformsGuide();
  for (const auto& cells : guide.rows()) {
    if (cells.back().ends_with("in passes alone")) said.insert(cells.front());
  }
  EXPECT_FALSE(said.empty());
  EXPECT_EQ(said, UniformsOfPassesAlone());
}

TEST(UniformsGuide, NamesEveryShaderAndWhatChoosesItsFigure) {
  const json table = Table();
  Rows named;
  const Guide guide = UniformsGuide();
  for (const auto& cells : guide.rows()) {
    if (cells.size() == 3) named.insert(cells[0] + " " + cells[1]);
  }
  for (const auto& [shader, entry] : table.at("shaders").items()) {
    EXPECT_TRUE(named.contains("`" + shader + "` `" + entry.at("kind").get<std::string>() + "`"))
        << shader;
  }
}

TEST(UniformsGuide, ShowsEverySheet) {
  Rows shown;
  const Guide guide = UniformsGuide();
  for (const GuideLink& link : guide.links()) shown.insert(link.target);
  const auto sheets = SheetUniforms();
  EXPECT_FALSE(sheets.empty());
  for (const auto& [name, uniforms] : sheets) {
    EXPECT_TRUE(shown.contains("images/uniforms/" + name + ".jpg")) << name;
  }
}

// Uniforms that do not show: the color_* are what `color` is taken apart into.
TEST(UniformsGuide, HasAPictureOfEveryUniform) {
  std::set<std::string> pictured = {"color_r", "color_g", "color_b"};
  for (const auto& [name, uniforms] : SheetUniforms()) {
    pictured.insert(uniforms.begin(), uniforms.end());
  }
  const json table = Table();
  const auto expect_picture = [&pictured](const json& entry) {
    const bool is_read = !entry.contains("kinds") || !entry["kinds"].empty();
    const std::string name = entry.at("name");
    EXPECT_TRUE(!is_read || pictured.contains(name)) << name;
  };
  for (const char* key : {"frame", "common"}) {
    for (const json& entry : table.at(key)) expect_picture(entry);
  }
  for (const json& set : table.at("sets")) {
    for (const json& entry : set) expect_picture(entry);
  }
  for (const json& kind : table.at("kinds_of_effects")) {
    for (const json& entry : kind.at("uniforms")) expect_picture(entry);
  }
  for (const json& shader : table.at("shaders")) {
    for (const json& entry : shader.at("parameters")) expect_picture(entry);
    EXPECT_TRUE(pictured.contains(shader.at("kind"))) << shader.at("kind");
  }
}

}  // namespace
}  // namespace krv::test
