// Descriptions beyond what a package may hold.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "description/effect_description.h"
#include "krv/types.h"
#include "support/scratch_folder.h"

namespace krv::test {
namespace {

std::string Repeat(const std::string& text, size_t count) {
  std::string repeated;
  for (size_t i = 0; i < count; ++i) repeated += text;
  return repeated;
}

std::string Listed(const std::string& entry, size_t count) {
  return '[' + Repeat(entry + ',', count - 1) + entry + ']';
}

std::string Nested(size_t levels) { return Repeat("[", levels) + Repeat("]", levels); }

std::string DescriptionWith(const std::string& key, const std::string& value) {
  return R"({"effect_type": "audio_visualization", ")" + key + "\": " + value + "}";
}

// The reason for which the description is refused; empty when it is read.
std::string Refusal(const std::string& text) {
  EffectDescription description;
  try {
    EXPECT_EQ(description.ReadDescription(text, "package/description.json"), kOk);
  } catch (const std::length_error& error) {
    return error.what();
  }
  return {};
}

TEST(DescriptionLimits, SixtyFourLevelsAreTheDeepest) {
  EXPECT_EQ(Refusal(DescriptionWith("extra", Nested(63))), "");
  EXPECT_EQ(Refusal(DescriptionWith("extra", Nested(64))),
            "lists and objects lie in one another more than 64 deep");
}

TEST(DescriptionLimits, NestingBombIsRefusedBeforeItIsATree) {
  EXPECT_EQ(Refusal(Repeat("[", 4'000'000)),
            "lists and objects lie in one another more than 64 deep");
  EXPECT_EQ(Refusal(Repeat(R"({"a":)", 500'000)),
            "lists and objects lie in one another more than 64 deep");
}

TEST(DescriptionLimits, ListsHoldAThousandAndTwentyFourEntries) {
  const std::string reason = "a list or object has more than 1024 entries";
  EXPECT_EQ(Refusal(DescriptionWith("extra", Listed("0", 1024))), "");
  EXPECT_EQ(Refusal(DescriptionWith("extra", Listed("0", 1025))), reason);
  EXPECT_EQ(Refusal(DescriptionWith("extra", Listed("0", 1'000'000))), reason);
  EXPECT_EQ(Refusal(DescriptionWith("extra", '[' + Listed("0", 1025) + ']')), reason);
}

TEST(DescriptionLimits, ObjectsHoldAThousandAndTwentyFourEntries) {
  std::string entries;
  for (int i = 0; i < 1025; ++i) entries += ",\"" + std::to_string(i) + "\": 0";
  EXPECT_EQ(Refusal(DescriptionWith("extra", '{' + entries.substr(1) + '}')),
            "a list or object has more than 1024 entries");
}

TEST(DescriptionLimits, ParametersAreEntries) {
  const std::string parameter = R"({"name": "a", "type": 3})";
  EXPECT_EQ(Refusal(DescriptionWith("params", Listed(parameter, 1024))), "");
  EXPECT_NE(Refusal(DescriptionWith("params", Listed(parameter, 1025))), "");
}

TEST(DescriptionLimits, SixtyFourShaderFilesAreTheMost) {
  EXPECT_EQ(Refusal(DescriptionWith("opengl_frag", Listed(R"("a.frag")", 64))), "");
  EXPECT_EQ(Refusal(DescriptionWith("opengl_frag", Listed(R"("a.frag")", 65))),
            "\"opengl_frag\" names more than 64 files");
  EXPECT_EQ(Refusal(DescriptionWith("opengl_vert", Listed(R"("a.vert")", 65))),
            "\"opengl_vert\" names more than 64 files");
}

TEST(DescriptionLimits, FourMebibytesAreTheLargestFile) {
  const ScratchFolder folder;
  std::string text = DescriptionWith("unique_name", R"("a")");
  text.append((size_t{4} << 20) - text.size(), ' ');
  EffectDescription description;
  EXPECT_EQ(description.LoadDescription(folder.Write("a/description.json", text).string()), kOk);
  EXPECT_THROW(description.LoadDescription(folder.Write("b/description.json", text + ' ').string()),
               std::length_error);
}

}  // namespace
}  // namespace krv::test
