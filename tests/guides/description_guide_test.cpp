// docs/package-authors.md against the schema of descriptions, and the JSON in all guides against
// the schemas.
#include <gmock/gmock.h>

#include <fstream>
#include <nlohmann/json.hpp>

#include "guides/guide_text.h"
#include "packages/description_schema.h"

namespace krv::test {
namespace {

using nlohmann::json;
using ::testing::IsEmpty;

json SchemaText() {
  return json::parse(std::ifstream(KRV_SOURCES "/packages/description.schema.json"));
}

// What the first cells of the tables under the guide's headings name.
std::set<std::string> KeysInTables() {
  std::set<std::string> keys;
  const Guide guide(KRV_SOURCES "/docs/package-authors.md");
  for (const auto& cells : guide.rows()) {
    if (cells.size() == 4 && cells[0].starts_with('`')) {
      keys.insert(cells[0].substr(1, cells[0].size() - 2));
    }
  }
  return keys;
}

TEST(DescriptionGuide, DescribesExactlyTheKeysOfTheSchema) {
  const json schema = SchemaText();
  std::set<std::string> known;
  for (const auto& [key, value] : schema.at("properties").items()) known.insert(key);
  for (const auto& [key, value] : schema["definitions"]["parameter"]["properties"].items()) {
    known.insert(key);
  }
  EXPECT_EQ(KeysInTables(), known);
}

TEST(GuideExamples, InJsonAreDescriptionsOrFilesOfParametersThatTheSchemasAccept) {
  const DescriptionSchema descriptions(KRV_SOURCES "/packages/description.schema.json");
  const DescriptionSchema params(KRV_SOURCES "/packages/params.schema.json");
  int examples = 0;
  for (const Guide& guide : AllGuides()) {
    for (const GuideBlock& block : guide.blocks()) {
      if (block.language != "json") continue;
      ++examples;
      const json document = json::parse(block.text, nullptr, false);
      ASSERT_FALSE(document.is_discarded()) << PlaceIn(guide, block.line);
      const auto& schema = document.contains("effect_type") ? descriptions : params;
      EXPECT_THAT(schema.Refusals(document), IsEmpty()) << PlaceIn(guide, block.line);
    }
  }
  EXPECT_GE(examples, 8);
}

}  // namespace
}  // namespace krv::test
