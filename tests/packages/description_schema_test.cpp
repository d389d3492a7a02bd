// The schema of descriptions against the shipped packages, against what `krv check` finds, and
// against what the plug-in reads.
#include "packages/description_schema.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <fstream>

#include "check/description_document.h"
#include "check/description_lint.h"
#include "description/effect_description.h"
#include "package_files.h"
#include "support/file_system.h"
#include "support/scratch_folder.h"

namespace krv::test {
namespace {

using nlohmann::json;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr char kSoundDescription[] = R"({
  "effect_type": "audio_visualization",
  "unique_name": "x",
  "display_name": "X",
  "opengl_frag": ["audio_visualization_geometry.frag"],
  "params": [
    {"name": "whole", "type": 3, "min_value": -1, "max_value": 5, "default_value": 2},
    {"name": "part", "type": 5, "min_value": 0, "max_value": 1.5, "default_value": 1},
    {"name": "yes", "type": 7, "default_value": true},
    {"name": "text", "type": 8, "default_value": "a"},
    {"name": "color", "ui_type": "Color", "default_value": 255}
  ]
})";

class DescriptionSchemaTest : public ::testing::Test {
 protected:
  std::string Write(const json& document) const {
    return Utf8Text(folder_.Write("description.json", document.dump()));
  }

  // Findings that are about the description alone and about one value at a time.
  std::vector<std::string> Findings(const json& document) const {
    tool::Findings findings;
    const auto read = tool::DescriptionDocument::Read(Utf8Path(Write(document)), &findings).value();
    tool::LintDescription(read, folder_.path(), &findings);
    std::vector<std::string> texts;
    for (const tool::Finding& finding : findings) {
      const bool sayable = std::all_of(kBeyondSchemas.begin(), kBeyondSchemas.end(),
                                       [&finding](const char* message) {
                                         return finding.message.find(message) == std::string::npos;
                                       });
      if (sayable) texts.push_back(finding.pointer + ": " + finding.message);
    }
    return texts;
  }

  // The schema accepts a document if and only if `krv check` finds nothing wrong with it, and the
  // plug-in reads what the schema accepts. Whether the schema does.
  bool Accepts(const json& document) {
    const auto refusals = schema_.Refusals(document);
    const auto findings = Findings(document);
    EXPECT_EQ(refusals.empty(), findings.empty())
        << "schema: " << ::testing::PrintToString(refusals)
        << "\ncheck: " << ::testing::PrintToString(findings);
    if (!refusals.empty()) return false;
    EffectDescription description;
    EXPECT_EQ(description.LoadDescription(Write(document)), 0);
    EXPECT_EQ(description.parameters().size(), document["params"].size());
    return true;
  }

  // The sound description after a JSON patch.
  bool AcceptsAfter(const std::string& patch) {
    SCOPED_TRACE(patch);
    return Accepts(json::parse(kSoundDescription).patch(json::parse(patch)));
  }

  static constexpr std::array<const char*, 5> kBeyondSchemas = {
      "there is no file", "leads out of the package", "is outside", "is above",
      "is the name of an earlier parameter"};

  ScratchFolder folder_;
  DescriptionSchema schema_{KRV_PACKAGES "/description.schema.json"};
};

TEST_F(DescriptionSchemaTest, IsNamedByEveryShippedDescriptionAndAcceptsIt) {
  const auto folders = host::FindPackageFolders(KRV_PACKAGES);
  ASSERT_THAT(folders, Not(IsEmpty()));
  for (const auto& folder : folders) {
    const auto text = json::parse(std::ifstream(folder / host::kDescriptionFileName));
    EXPECT_THAT(schema_.Refusals(text), IsEmpty()) << Utf8Text(folder);
    EXPECT_EQ(text.value("$schema", ""), "../description.schema.json") << Utf8Text(folder);
  }
}

TEST_F(DescriptionSchemaTest, EveryKeyHasATitleAndSaysWhatItMeans) {
  const json& schema = schema_.json();
  for (const json& keys :
       {schema["properties"], schema["definitions"]["parameter"]["properties"]}) {
    for (const auto& [key, value] : keys.items()) {
      EXPECT_FALSE(value.value("title", "").empty()) << key;
      EXPECT_FALSE(value.value("description", "").empty()) << key;
    }
  }
}

TEST_F(DescriptionSchemaTest, DefaultsMeanWhatAbsentKeysMean) {
  const json absent = json::parse(kSoundDescription);
  json present = absent;
  for (const auto& [key, value] : schema_.json()["properties"].items()) {
    if (value.contains("default")) present[key] = value["default"];
  }
  EXPECT_GT(present.size(), absent.size());
  EffectDescription one;
  EffectDescription other;
  ASSERT_EQ(one.LoadDescription(Write(absent)), 0);
  ASSERT_EQ(other.LoadDescription(Write(present)), 0);
  EXPECT_EQ(one.Version(), other.Version());
  EXPECT_EQ(one.Quality(), other.Quality());
  EXPECT_EQ(one.BlendEnabled(), other.BlendEnabled());
  EXPECT_EQ(one.Original(), other.Original());
  EXPECT_EQ(one.Enciphered(), other.Enciphered());
  EXPECT_EQ(one.VertexShaderPaths(), other.VertexShaderPaths());
  EXPECT_EQ(one.input_names(), other.input_names());
}

TEST_F(DescriptionSchemaTest, RefusesWhatCheckFindsAndAcceptsTheRest) {
  const std::pair<const char*, bool> cases[] = {
      {R"([])", true},
      {R"([{"op": "remove", "path": "/effect_type"}])", false},
      {R"([{"op": "replace", "path": "/effect_type", "value": "Audio_Visualization"}])", false},
      {R"([{"op": "remove", "path": "/unique_name"}])", false},
      {R"([{"op": "replace", "path": "/unique_name", "value": ""}])", false},
      {R"([{"op": "replace", "path": "/unique_name", "value": 7}])", false},
      {R"([{"op": "remove", "path": "/display_name"}])", false},
      {R"([{"op": "add", "path": "/version", "value": "1.2"}])", true},
      {R"([{"op": "add", "path": "/version", "value": 1}])", false},
      {R"([{"op": "add", "path": "/quality", "value": "low"}])", true},
      {R"([{"op": "add", "path": "/quality", "value": "HIGH"}])", false},
      {R"([{"op": "add", "path": "/input_list", "value": ["mask"]}])", true},
      {R"([{"op": "add", "path": "/input_list", "value": ["mask", "human_segment"]}])", false},
      {R"([{"op": "add", "path": "/input_list", "value": ["person"]}])", false},
      {R"([{"op": "add", "path": "/input_list", "value": "mask"}])", false},
      {R"([{"op": "replace", "path": "/opengl_frag", "value": []}])", false},
      {R"([{"op": "replace", "path": "/opengl_frag", "value": "a.frag"}])", false},
      {R"([{"op": "replace", "path": "/opengl_frag", "value": ["a.frag", 1]}])", false},
      {R"([{"op": "remove", "path": "/opengl_frag"}])", false},
      {R"([{"op": "add", "path": "/opengl_vert", "value": ["a.vert"]}])", true},
      {R"([{"op": "add", "path": "/opengl_vert", "value": ["a.vert", "b.vert"]}])", false},
      {R"([{"op": "add", "path": "/blend_script", "value": "blend.frag"}])", true},
      {R"([{"op": "add", "path": "/blend_script", "value": true}])", false},
      {R"([{"op": "add", "path": "/without_blend", "value": true}])", true},
      {R"([{"op": "add", "path": "/without_blend", "value": 1}])", false},
      {R"([{"op": "add", "path": "/original", "value": true}])", true},
      {R"([{"op": "add", "path": "/original", "value": "yes"}])", false},
      {R"([{"op": "add", "path": "/ENCRYPT", "value": "1"}])", true},
      {R"([{"op": "add", "path": "/ENCRYPT", "value": "01"}])", false},
      {R"([{"op": "add", "path": "/ENCRYPT", "value": 1}])", false},
      {R"([{"op": "add", "path": "/author", "value": "me"}])", false},
      {R"([{"op": "add", "path": "/$schema", "value": "../description.schema.json"}])", true},
      {R"([{"op": "remove", "path": "/params"}])", false},
      {R"([{"op": "replace", "path": "/params", "value": {}}])", false},
      {R"([{"op": "replace", "path": "/params", "value": []}])", true},
  };
  for (const auto& [patch, accepted] : cases) EXPECT_EQ(AcceptsAfter(patch), accepted) << patch;
}

TEST_F(DescriptionSchemaTest, RefusesWrongParametersAndAcceptsTheRest) {
  const std::pair<const char*, bool> cases[] = {
      {R"([{"op": "replace", "path": "/params/0", "value": "whole"}])", false},
      {R"([{"op": "remove", "path": "/params/0/name"}])", false},
      {R"([{"op": "replace", "path": "/params/0/name", "value": ""}])", false},
      {R"([{"op": "replace", "path": "/params/0/name", "value": 1}])", false},
      {R"([{"op": "remove", "path": "/params/0/type"}])", false},
      {R"([{"op": "replace", "path": "/params/0/type", "value": 9}])", false},
      {R"([{"op": "replace", "path": "/params/0/type", "value": 3.5}])", false},
      {R"([{"op": "replace", "path": "/params/0/type", "value": "3"}])", false},
      {R"([{"op": "replace", "path": "/params/0/type", "value": true}])", false},
      {R"([{"op": "remove", "path": "/params/0/default_value"}])", false},
      {R"([{"op": "replace", "path": "/params/0/default_value", "value": "2"}])", false},
      {R"([{"op": "replace", "path": "/params/0/default_value", "value": 2.5}])", false},
      {R"([{"op": "replace", "path": "/params/0/default_value", "value": 2.0}])", true},
      {R"([{"op": "replace", "path": "/params/0/default_value", "value": true}])", true},
      {R"([{"op": "replace", "path": "/params/0/max_value", "value": 2147483647}])", true},
      {R"([{"op": "replace", "path": "/params/0/max_value", "value": 2147483648}])", false},
      {R"([{"op": "replace", "path": "/params/0/min_value", "value": -2147483649}])", false},
      {R"([{"op": "remove", "path": "/params/0/min_value"}])", true},
      {R"([{"op": "replace", "path": "/params/1/default_value", "value": "1"}])", false},
      {R"([{"op": "replace", "path": "/params/1/max_value", "value": null}])", false},
      {R"([{"op": "replace", "path": "/params/1/type", "value": 6}])", true},
      {R"([{"op": "replace", "path": "/params/2/default_value", "value": 0}])", true},
      {R"([{"op": "replace", "path": "/params/2/default_value", "value": "true"}])", false},
      {R"([{"op": "replace", "path": "/params/3/default_value", "value": 1}])", false},
      {R"([{"op": "replace", "path": "/params/4/default_value", "value": "#ff0000"}])", false},
      {R"([{"op": "add", "path": "/params/4/type", "value": "colour"}])", true},
      {R"([{"op": "add", "path": "/params/0/ui_type", "value": "NoShow"}])", true},
      {R"([{"op": "add", "path": "/params/0/ui_type", "value": "Slider"}])", true},
      {R"([{"op": "add", "path": "/params/0/ui_type", "value": 1}])", false},
      {R"([{"op": "add", "path": "/params/0/step", "value": 1}])", false},
      {R"([{"op": "add", "path": "/params/0/$comment", "value": "a remark"}])", true},
  };
  for (const auto& [patch, accepted] : cases) EXPECT_EQ(AcceptsAfter(patch), accepted) << patch;
}

// The files that the reader is tested with hold every odd form that there is. What they leave out
// is filled in, else little would be accepted.
TEST_F(DescriptionSchemaTest, AgreesWithCheckOnTheReadersOwnFiles) {
  int accepted = 0;
  int refused = 0;
  for (const auto& entry : std::filesystem::directory_iterator(KRV_DESCRIPTION_DATA)) {
    const json odd = json::parse(std::ifstream(entry.path()), nullptr, false);
    if (odd.is_discarded()) continue;
    json document = odd;
    if (odd.is_object()) {
      document = json::parse(kSoundDescription);
      document.update(odd);
    }
    SCOPED_TRACE(Utf8Text(entry.path()));
    ++(Accepts(document) ? accepted : refused);
  }
  EXPECT_GT(accepted, 10);
  EXPECT_GT(refused, 10);
}

}  // namespace
}  // namespace krv::test
