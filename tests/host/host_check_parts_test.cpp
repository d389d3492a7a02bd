// What `krv check` is made of.
#include <gmock/gmock.h>

#include "check/description_document.h"
#include "check/description_lint.h"
#include "check/shader_log.h"
#include "host_test_files.h"

namespace krv::tool {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST(ShaderLog, FailuresAreSplitByStage) {
  const auto failures = ParseShaderFailures(
      "something else\n"
      "Shader compiler failed (vert) : 0:1(1): error: a\n0:2(1): error: b\n\n"
      "Shader compiler failed (frag) : 0:3(1): error: c\n"
      "Shader compiler failed (link status) : not linked\n"
      "GL error 0x502 at graphics/x.cpp:12\n"
      "tail\n");
  ASSERT_EQ(failures.size(), 3u);
  EXPECT_EQ(failures[0].stage, ShaderStage::kVertex);
  EXPECT_EQ(failures[0].log, "0:1(1): error: a\n0:2(1): error: b\n");
  EXPECT_EQ(failures[1].stage, ShaderStage::kFragment);
  EXPECT_EQ(failures[1].log, "0:3(1): error: c");
  EXPECT_EQ(failures[2].stage, ShaderStage::kLink);
  EXPECT_EQ(failures[2].log, "not linked");
}

TEST(ShaderLog, OutputWithoutFailuresHasNone) {
  EXPECT_THAT(ParseShaderFailures(""), IsEmpty());
  EXPECT_THAT(ParseShaderFailures("GL error 0x502 at a.cpp:1\n"), IsEmpty());
}

TEST(ShaderLog, GlErrorsAreKeptWhole) {
  EXPECT_THAT(ParseGlErrors("x\nGL error 0x502 at a.cpp:1\nGL error 0x500 at b.cpp:2\n"),
              ElementsAre("GL error 0x502 at a.cpp:1", "GL error 0x500 at b.cpp:2"));
}

struct DriverLine {
  const char* log;
  int line;
  bool warning;
  const char* text;
};

TEST(ShaderLog, EachDriversFormGivesTheLine) {
  const DriverLine cases[] = {
      {"0:12(5): error: `foo' undeclared", 12, false, "`foo' undeclared"},
      {"0:3(1): warning: unused", 3, true, "unused"},
      {"0(7) : error C1008: undefined variable \"foo\"", 7, false,
       "C1008: undefined variable \"foo\""},
      {"0(8) : warning C7050: maybe", 8, true, "C7050: maybe"},
      {"ERROR: 0:9: 'foo' : undeclared identifier", 9, false, "'foo' : undeclared identifier"},
      {"WARNING: 0:4: something", 4, true, "something"},
      {"a form of its own", 0, false, "a form of its own"},
  };
  for (const DriverLine& wanted : cases) {
    const auto messages = ParseDriverLog(wanted.log);
    ASSERT_EQ(messages.size(), 1u) << wanted.log;
    EXPECT_EQ(messages[0].line, wanted.line) << wanted.log;
    EXPECT_EQ(messages[0].warning, wanted.warning) << wanted.log;
    EXPECT_EQ(messages[0].text, wanted.text);
  }
}

TEST(ShaderLog, EmptyLinesSayNothing) { EXPECT_THAT(ParseDriverLog("\n \r\n"), IsEmpty()); }

class DescriptionCheck : public host::FilesTest {
 protected:
  // What is wrong with a description of this text, as lines without the path.
  std::vector<std::string> Check(const std::string& text) {
    host::WriteFile(Path("description.json"), text);
    Findings findings;
    const auto document = DescriptionDocument::Read(Path("description.json"), &findings);
    if (document) LintDescription(*document, folder_->path(), &findings);
    std::vector<std::string> lines;
    for (Finding& finding : findings) {
      finding.file = "d";
      lines.push_back(ToText(finding));
    }
    return lines;
  }

  // The same for a sound description with further lines of keys from line 7.
  std::vector<std::string> CheckWith(const std::string& keys) {
    return Check(R"({
"effect_type": "audio_visualization",
"unique_name": "x",
"display_name": "X",
"opengl_frag": ["audio_visualization_geometry.frag"]
,
)" + keys + "}");
  }

  std::vector<std::string> CheckParameter(const std::string& parameter) {
    return CheckWith("\"params\": [\n" + parameter + "\n]");
  }
};

TEST_F(DescriptionCheck, SoundDescriptionHasNoFindings) {
  EXPECT_THAT(CheckParameter(R"({"name": "a", "type": 5, "min_value": 0, "max_value": 1,
                                 "default_value": 0.5})"),
              IsEmpty());
}

TEST_F(DescriptionCheck, SyntaxErrorHasLineAndColumn) {
  EXPECT_THAT(Check("{\n  \"a\": 1\n  \"b\": 2\n}"),
              ElementsAre(HasSubstr("d:3:5: error: not valid JSON: syntax error")));
}

TEST_F(DescriptionCheck, EmptyFileIsAnError) {
  EXPECT_THAT(Check(""), ElementsAre("d: error: the file is empty or unreadable"));
}

TEST_F(DescriptionCheck, DescriptionThatIsNoObjectIsAnError) {
  EXPECT_THAT(Check("[1]"), ElementsAre("d:1: error: a description is an object, not an array"));
}

TEST_F(DescriptionCheck, FilesOutsideOfThePackageAreErrors) {
  for (const char* file : {"../a.frag", "..\\\\a.frag", "sub/../../a.frag"}) {
    EXPECT_THAT(CheckWith(R"("params": [], "blend_script": ")" + std::string(file) + "\""),
                ElementsAre(HasSubstr("d:7: error: /blend_script: ")))
        << file;
    EXPECT_THAT(CheckWith(R"("params": [], "blend_script": ")" + std::string(file) + "\""),
                ElementsAre(HasSubstr("leads out of the package")))
        << file;
  }
}

TEST_F(DescriptionCheck, EffectTypeMustBeExact) {
  EXPECT_THAT(Check(R"({"unique_name": "x", "display_name": "X", "params": [],
                        "opengl_frag": ["audio_visualization_geometry.frag"]})"),
              ElementsAre(HasSubstr("\"effect_type\" is missing")));
  EXPECT_THAT(CheckWith(R"("effect_type": "Audio_Visualization", "params": [])"),
              ::testing::Contains(HasSubstr("d:7: error: /effect_type: must be "
                                            "\"audio_visualization\", not")));
}

TEST_F(DescriptionCheck, KeyThatOccursTwiceIsReportedAtTheSecond) {
  EXPECT_THAT(CheckWith("\"params\": [],\n\"unique_name\": \"y\""),
              ElementsAre(HasSubstr("d:8: error: /unique_name: the key stands in this object")));
}

TEST_F(DescriptionCheck, MissingShaderFileIsNamedAtItsEntry) {
  EXPECT_THAT(CheckWith("\"params\": [],\n\"version\": \"1\""),
              ElementsAre(HasSubstr("d:5: error: /opengl_frag/0: there is no file")));
  EXPECT_THAT(CheckWith("\"params\": [],\n\"blend_script\": \"none.frag\""),
              ElementsAre(HasSubstr("d:8: error: /blend_script: there is no file")));
  EXPECT_THAT(CheckWith("\"params\": [],\n\"opengl_vert\": [\n\"none.vert\"]"),
              ElementsAre(HasSubstr("d:9: error: /opengl_vert/0: there is no file")));
}

TEST_F(DescriptionCheck, BuiltinShaderInAPackageWithAVersionIsExplained) {
  EXPECT_THAT(CheckWith("\"params\": [],\n\"version\": \"1\""),
              ElementsAre(HasSubstr("is for packages without \"version\"")));
  host::WriteFile(Path("audio_visualization_geometry.frag"), "");
  EXPECT_THAT(CheckWith("\"params\": [],\n\"version\": \"1\""), IsEmpty());
}

TEST_F(DescriptionCheck, ShaderFilesMayUseEitherSeparator) {
  host::WriteFile(Path("sub/a.frag"), "");
  EXPECT_THAT(CheckWith("\"params\": [], \"blend_script\": \"sub\\\\a.frag\""), IsEmpty());
  EXPECT_THAT(CheckWith("\"params\": [], \"blend_script\": \"sub/a.frag\""), IsEmpty());
}

TEST_F(DescriptionCheck, WrongTypeIsReportedWithTheTypeWanted) {
  EXPECT_THAT(CheckWith("\"params\": [],\n\"without_blend\": \"yes\""),
              ElementsAre("d:8: error: /without_blend: must be true or false, not a text"));
  EXPECT_THAT(CheckWith("\"params\": [],\n\"input_list\": [\"mask\",\n3]"),
              ElementsAre("d:9: error: /input_list/1: must be a text, not a number"));
  EXPECT_THAT(CheckWith("\"params\": {}"),
              ElementsAre(HasSubstr("d:7: error: /params: must be an array")));
}

TEST_F(DescriptionCheck, InputsThatExcludeEachOtherAreAnError) {
  EXPECT_THAT(CheckWith("\"params\": [], \"input_list\": [\"mask\", \"human_segment\"]"),
              ElementsAre(HasSubstr("error: /input_list: ")));
}

TEST_F(DescriptionCheck, MisspeltKeyIsAWarningWithASuggestion) {
  EXPECT_THAT(CheckWith("\"params\": [], \"qualty\": \"low\""),
              ElementsAre(HasSubstr("warning: /qualty: is not a key of descriptions; did you mean "
                                    "\"quality\"?")));
}

TEST_F(DescriptionCheck, KeyThatNothingReadsIsAWarningUnlessItIsARemark) {
  EXPECT_THAT(CheckWith("\"params\": [], \"author\": \"somebody\""),
              ElementsAre(HasSubstr("warning: /author: is not a key of descriptions")));
  EXPECT_THAT(CheckWith("\"params\": [], \"$comment\": \"by somebody\""), IsEmpty());
}

TEST_F(DescriptionCheck, UnknownQualityIsAWarning) {
  EXPECT_THAT(CheckWith("\"params\": [], \"quality\": \"HIGH\""),
              ElementsAre(HasSubstr("warning: /quality: \"HIGH\" is none of")));
}

TEST_F(DescriptionCheck, ParameterIsReportedAtItsLine) {
  EXPECT_THAT(CheckParameter(R"({"name": "a", "type": 99, "default_value": 1})"),
              ElementsAre(HasSubstr("d:8: error: /params/0/type: 99 is no kind of value")));
  EXPECT_THAT(CheckParameter(R"({"type": 5, "default_value": 1})"),
              ElementsAre("d:8: error: /params/0: \"name\" is missing"));
  EXPECT_THAT(CheckParameter(R"({"name": "a", "default_value": 1})"),
              ElementsAre(HasSubstr("d:8: error: /params/0: \"type\" is missing")));
  EXPECT_THAT(CheckParameter("7"), ElementsAre(HasSubstr("error: /params/0: a parameter is")));
}

TEST_F(DescriptionCheck, ColourNeedsNoType) {
  EXPECT_THAT(CheckParameter(R"({"name": "a", "ui_type": "Color", "default_value": 1})"),
              IsEmpty());
}

TEST_F(DescriptionCheck, ValueOfAnotherTypeThanItsKindIsAnError) {
  EXPECT_THAT(CheckParameter(R"({"name": "a", "type": 5, "default_value": "1"})"),
              ElementsAre(HasSubstr("error: /params/0/default_value: must be a number")));
  EXPECT_THAT(CheckParameter(R"({"name": "a", "type": 8, "default_value": 1})"),
              ElementsAre(HasSubstr("error: /params/0/default_value: must be a text")));
}

TEST_F(DescriptionCheck, DefaultOutsideTheLimitsIsAnError) {
  EXPECT_THAT(CheckParameter(R"({"name": "a", "type": 5, "min_value": 0, "max_value": 1,
                                 "default_value": 1.5})"),
              ElementsAre(HasSubstr("error: /params/0/default_value: 1.5 is outside 0 to 1")));
  EXPECT_THAT(CheckParameter(R"({"name": "a", "type": 3, "min_value": 2, "max_value": 1,
                                 "default_value": 1})"),
              ElementsAre(HasSubstr("error: /params/0/min_value: 2 is above \"max_value\", 1")));
}

TEST_F(DescriptionCheck, IntegerMustFitAndIsNotCutInSilence) {
  EXPECT_THAT(CheckParameter(R"({"name": "a", "type": 3, "default_value": 3000000000})"),
              ElementsAre(HasSubstr("error: /params/0/default_value: does not fit")));
  EXPECT_THAT(CheckParameter(R"({"name": "a", "type": 3, "default_value": 1.5})"),
              ElementsAre(HasSubstr("warning: /params/0/default_value: is cut to an integer")));
  EXPECT_THAT(CheckParameter(R"({"name": "a", "type": 3, "default_value": 2.0})"), IsEmpty());
}

TEST_F(DescriptionCheck, NameOfAnEarlierParameterIsAnError) {
  EXPECT_THAT(CheckParameter("{\"name\": \"a\", \"type\": 5, \"default_value\": 1},\n"
                             "{\"name\": \"a\", \"type\": 5, \"default_value\": 1}"),
              ElementsAre(HasSubstr("d:9: error: /params/1/name: \"a\" is the name of an")));
}

TEST_F(DescriptionCheck, ParameterWithoutADefaultIsAWarning) {
  EXPECT_THAT(CheckParameter(R"({"name": "a", "type": 5})"),
              ElementsAre(HasSubstr("warning: /params/0: without \"default_value\"")));
}

TEST(BuiltinShaders, AreFoundByTheirFileNameInPackagesWithoutAVersion) {
  const nlohmann::ordered_json plain = {{"unique_name", "x"}};
  const nlohmann::ordered_json versioned = {{"version", "1"}};
  EXPECT_TRUE(IsBuiltinShader(plain, "audio_visualization_halo_spectrum.frag"));
  EXPECT_TRUE(IsBuiltinShader(plain, "folder\\audio_visualization_halo_geometry.frag"));
  EXPECT_FALSE(IsBuiltinShader(plain, "folder/audio_visualization_halo_geometry.frag"));
  EXPECT_FALSE(IsBuiltinShader(plain, "own.frag"));
  EXPECT_FALSE(IsBuiltinShader(versioned, "audio_visualization_geometry.frag"));
}

}  // namespace
}  // namespace krv::tool
