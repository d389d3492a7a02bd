#include "description/effect_description.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "description/description_files.h"
#include "krv/types.h"
#include "support/file_system.h"
#include "support/scratch_folder.h"

namespace krv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// Whether the file is rejected with code 4 and an empty document.
bool IsRejected(const std::string& path) {
  EffectDescription description;
  return description.LoadDescription(path) == kFailed && description.json().is_null() &&
         description.parameters().empty();
}

// The text of the error that `function` raises; empty when it raises none.
template <class Function>
std::string ErrorOf(Function function) {
  try {
    function();
  } catch (const nlohmann::json::exception& error) {
    return error.what();
  }
  return {};
}

TEST(EffectDescription, CompleteFileFillsEveryAccessor) {
  EffectDescription description;
  ASSERT_EQ(description.LoadDescription(DataFile("complete")), kOk);
  const std::string folder = KRV_TEST_DATA_DIR;
  EXPECT_EQ(description.UniqueName(), "test.complete");
  EXPECT_EQ(description.DisplayName(), "Größe 音");
  EXPECT_EQ(description.Version(), "1.2.3");
  EXPECT_FALSE(description.BlendEnabled());
  EXPECT_EQ(description.BlendScriptPath(), folder + "\\blend.frag");
  EXPECT_THAT(description.FragmentShaderPaths(),
              ElementsAre(folder + "\\first.frag", folder + "\\sub/second.frag"));
  EXPECT_THAT(description.VertexShaderPaths(), ElementsAre(folder + "\\first.vert"));
  EXPECT_EQ(description.Quality(), kQualityHigh);
  EXPECT_TRUE(description.UsesHumanSegment());
  EXPECT_TRUE(description.UsesMask());
  EXPECT_TRUE(description.Enciphered());
  EXPECT_TRUE(description.Original());
  EXPECT_EQ(description.package_folder(), folder);
  EXPECT_EQ(description.parameters().size(), 2u);
}

TEST(EffectDescription, AbsentKeysHaveDefaults) {
  const auto description = Load("minimal");
  EXPECT_FALSE(description->json().empty());
  EXPECT_EQ(description->UniqueName(), "");
  EXPECT_EQ(description->DisplayName(), "");
  EXPECT_EQ(description->Version(), "");
  EXPECT_TRUE(description->BlendEnabled());
  EXPECT_EQ(description->BlendScriptPath(), "");
  EXPECT_THAT(description->FragmentShaderPaths(), IsEmpty());
  EXPECT_THAT(description->VertexShaderPaths(), IsEmpty());
  EXPECT_EQ(description->Quality(), kQualityMedium);
  EXPECT_THAT(description->input_names(), IsEmpty());
  EXPECT_FALSE(description->UsesHumanSegment());
  EXPECT_FALSE(description->UsesMask());
  EXPECT_FALSE(description->Enciphered());
  EXPECT_FALSE(description->Original());
}

TEST(EffectDescription, UnopenableFileIsRejected) {
  EXPECT_TRUE(IsRejected(DataFile("there_is_no_such_file")));
}

TEST(EffectDescription, EffectTypeInOtherLetterCaseIsRejected) {
  EXPECT_TRUE(IsRejected(DataFile("effect_type_in_capitals")));
}

TEST(EffectDescription, MissingEffectTypeIsRejected) {
  EXPECT_TRUE(IsRejected(DataFile("effect_type_missing")));
  EXPECT_TRUE(IsRejected(DataFile("empty_object")));
}

TEST(EffectDescription, EffectTypeWithTrailingSpaceIsRejected) {
  EXPECT_TRUE(IsRejected(DataFile("effect_type_longer")));
}

TEST(EffectDescription, EffectTypeThatIsNoTextIsRejected) {
  EXPECT_TRUE(IsRejected(DataFile("effect_type_not_a_text")));
}

TEST(EffectDescription, RootThatIsNoObjectIsRejected) {
  EXPECT_TRUE(IsRejected(DataFile("root_is_array")));
  EXPECT_TRUE(IsRejected(DataFile("root_is_text")));
}

TEST(EffectDescription, WrongEffectTypeIsRejectedBeforeParametersAreRead) {
  EXPECT_TRUE(IsRejected(DataFile("rejected_before_params")));
}

TEST(EffectDescription, InvalidJsonRaisesTheParsersError) {
  for (const char* name : {"invalid_json", "text_after_document", "empty_file"}) {
    EXPECT_THAT(ErrorOf([&] { Load(name); }), HasSubstr("parse error")) << name;
  }
}

TEST(EffectDescription, QualityNamesItsLevel) {
  EXPECT_EQ(Load("quality_low")->Quality(), 0);
  EXPECT_EQ(Load("quality_medium")->Quality(), 1);
  EXPECT_EQ(Load("quality_high")->Quality(), 2);
}

TEST(EffectDescription, QualityInCapitalsCountsAsMedium) {
  EXPECT_EQ(Load("quality_in_capitals")->Quality(), Load("quality_medium")->Quality());
}

TEST(EffectDescription, OnlyTheTextOneMeansEnciphered) {
  EXPECT_TRUE(Load("encrypt_one")->Enciphered());
  for (const char* name :
       {"encrypt_zero_one", "encrypt_one_zero", "encrypt_number", "encrypt_empty"}) {
    EXPECT_FALSE(Load(name)->Enciphered()) << name;
  }
}

TEST(EffectDescription, WithoutBlendFalseKeepsTheBlend) {
  EXPECT_TRUE(Load("without_blend_false")->BlendEnabled());
}

TEST(EffectDescription, InputNamesAreASetOfAllNames) {
  EXPECT_THAT(Load("complete")->input_names(), ElementsAre("human_segment", "logo", "mask"));
}

TEST(EffectDescription, InputNamesOfAFirstFileStay) {
  EffectDescription description;
  description.LoadDescription(DataFile("complete"));
  ASSERT_EQ(description.LoadDescription(DataFile("params_missing")), kOk);
  EXPECT_THAT(description.input_names(), ElementsAre("human_segment", "logo", "mask"));
}

TEST(EffectDescription, WrongInputListRaisesTheLibrarysError) {
  EXPECT_THAT(ErrorOf([] { Load("input_list_not_an_array"); }),
              HasSubstr("type must be array, but is string"));
  EXPECT_THAT(ErrorOf([] { Load("input_list_with_number"); }),
              HasSubstr("type must be string, but is number"));
}

TEST(EffectDescription, AccessorOfAWronglyTypedKeyRaisesTheLibrarysError) {
  EXPECT_THAT(ErrorOf([] { (void)Load("unique_name_not_a_text")->UniqueName(); }),
              HasSubstr("type must be string, but is number"));
  EXPECT_THAT(ErrorOf([] { (void)Load("quality_not_a_text")->Quality(); }),
              HasSubstr("type must be string, but is number"));
  EXPECT_THAT(ErrorOf([] { (void)Load("without_blend_not_a_boolean")->BlendEnabled(); }),
              HasSubstr("type must be boolean, but is number"));
  EXPECT_THAT(ErrorOf([] { (void)Load("frag_not_an_array")->FragmentShaderPaths(); }),
              HasSubstr("type must be array, but is string"));
}

TEST(EffectDescription, MissingParamsLeaveTheEffectWithoutParameters) {
  EffectDescription description;
  EXPECT_EQ(description.LoadDescription(DataFile("params_missing")), kOk);
  EXPECT_EQ(description.UniqueName(), "params_missing");
  EXPECT_TRUE(description.UsesMask());
  EXPECT_THAT(description.parameters(), IsEmpty());
  EXPECT_THAT(description.parameters_by_name(), IsEmpty());
}

// Package paths are a matter of text: these files lie where the path says, relative to a folder of
// the test's own that is the current one.
class PackagePath : public ::testing::Test {
 protected:
  PackagePath() {
    std::ifstream source(DataFile("one_fragment"), std::ios::binary);
    content_.assign(std::istreambuf_iterator<char>(source), {});
    std::filesystem::current_path(scratch_.path());
  }
  ~PackagePath() override { std::filesystem::current_path(before_); }

  ScratchFolder scratch_;
  std::string content_;
  EffectDescription description_;

 private:
  std::filesystem::path before_ = std::filesystem::current_path();
};

TEST_F(PackagePath, FilesAreJoinedByABackslash) {
  scratch_.Write("fx/bars/description.json", content_);
  ASSERT_EQ(description_.LoadDescription("fx/bars/description.json"), kOk);
  EXPECT_EQ(description_.package_folder(), "fx/bars");
  EXPECT_THAT(description_.FragmentShaderPaths(), ElementsAre("fx/bars\\a.frag"));
  EXPECT_THAT(description_.VertexShaderPaths(), ElementsAre("fx/bars\\a.vert"));
  EXPECT_EQ(description_.BlendScriptPath(), "fx/bars\\b.frag");
}

TEST_F(PackagePath, LastSeparatorOfEitherKindEndsTheFolder) {
  scratch_.Write("fx/bars/description.json", content_);
  ASSERT_EQ(description_.LoadDescription("fx\\bars\\description.json"), kOk);
  EXPECT_EQ(description_.package_folder(), "fx\\bars");
}

TEST_F(PackagePath, PathWithoutSeparatorIsItsOwnFolder) {
  scratch_.Write("description.json", content_);
  ASSERT_EQ(description_.LoadDescription("description.json"), kOk);
  EXPECT_EQ(description_.package_folder(), "description.json");
}

TEST_F(PackagePath, NamesOutsideAsciiOpen) {
  scratch_.Write(Utf8Path("Größe 音/description.json"), content_);
  ASSERT_EQ(description_.LoadDescription("Größe 音/description.json"), kOk);
  EXPECT_EQ(description_.package_folder(), "Größe 音");
}

}  // namespace
}  // namespace krv::test
