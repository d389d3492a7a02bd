// What `krv check` says about parameters that do nothing, and when it is silent.
#include <gmock/gmock.h>

#include "check/shader_words.h"
#include "check/unread_parameters.h"
#include "host_test_files.h"

namespace krv::tool {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

TEST(ShaderWords, AreWhatStandsOutsideOfComments) {
  ShaderWords words;
  words.Add("a/*b*/c // d\ne/**/f /* g\n * h */ i // j \\\nk // l\rm // n");
  for (const char* word : {"a", "c", "e", "f", "i", "k", "m"}) {
    EXPECT_TRUE(words.Holds(word)) << word;
  }
  for (const char* word : {"b", "d", "g", "h", "j", "l", "n", "ac", "ef"}) {
    EXPECT_FALSE(words.Holds(word)) << word;
  }
}

TEST(ShaderWords, AreWhole) {
  ShaderWords words;
  words.Add("gap_2+size(ring");
  EXPECT_TRUE(words.Holds("gap_2"));
  EXPECT_FALSE(words.Holds("gap"));
  EXPECT_FALSE(words.Holds("siz"));
  EXPECT_TRUE(words.Holds("ring"));
}

TEST(ShaderWords, AnUnfinishedCommentReachesTheEnd) {
  ShaderWords words;
  words.Add("a /* b");
  words.Add("c /");
  EXPECT_TRUE(words.Holds("a"));
  EXPECT_FALSE(words.Holds("b"));
  EXPECT_TRUE(words.Holds("c"));
}

TEST(ShaderWords, TellUniformsThatAreNumbersFromOtherNames) {
  ShaderWords words;
  words.Add(
      "uniform float a;\nuniform highp int b, c [2] ;\n// uniform float d;\nuniform vec2 e;\n"
      "uniform sampler2D f;\nfloat g;\nuniform bool h = false;\nuniform Block { float i; };\n");
  EXPECT_THAT(words.numbers(), ElementsAre("a", "b", "c", "h"));
}

constexpr char kEmpty[] = "void main() {}";

class UnreadParameters : public host::FilesTest {
 protected:
  // The warnings about a package of one shader and these parameters, each on a line of its own from
  // line 8, as lines without the folder.
  std::vector<std::string> Check(const std::string& shader, const std::string& parameters,
                                 const std::string& further_keys = "",
                                 const std::string& unique_name = "x") {
    WritePackage("p", unique_name, shader,
                 "\"params\": [\n" + parameters + "\n]" +
                     (further_keys.empty() ? "" : ",\n" + further_keys));
    return CheckFolder();
  }

  // The same for a package of one built-in shader.
  std::vector<std::string> CheckBuiltin(const std::string& name, const std::string& parameters) {
    host::WriteFile(Path("p/description.json"), R"({"unique_name": "x", "opengl_frag": [")" + name +
                                                    "\"],\n\"params\": [\n" + parameters + "\n]}");
    return CheckFolder();
  }

  std::vector<std::string> CheckFolder() {
    Findings findings;
    const auto document = DescriptionDocument::Read(Path("p/description.json"), &findings).value();
    LintUnreadParameters(document, Path("p"), &findings);
    std::vector<std::string> lines;
    for (Finding& finding : findings) {
      finding.file = "d";
      lines.push_back(ToText(finding));
    }
    return lines;
  }

  static std::string Number(const std::string& name, int type = 5) {
    return R"({"name": ")" + name + R"(", "type": )" + std::to_string(type) +
           R"(, "default_value": 1})";
  }

  static std::string Text(const std::string& name) {
    return R"({"name": ")" + name + R"(", "type": 8, "default_value": "1,255,0"})";
  }
};

TEST_F(UnreadParameters, AreNamedAtTheirLineWithWhatToDo) {
  EXPECT_THAT(Check("uniform float speed;", Number("speed") + ",\n" + Number("wobble")),
              ElementsAre("d:9: warning: /params/1/name: no shader reads \"wobble\": declare "
                          "\"uniform float wobble\" in one, or remove the parameter"));
}

TEST_F(UnreadParameters, AreDeclaredByTheirKind) {
  EXPECT_THAT(Check(kEmpty, Number("wobble", 3)), ElementsAre(HasSubstr("\"uniform int wobble\"")));
  EXPECT_THAT(Check(kEmpty, Number("wobble", 7)),
              ElementsAre(HasSubstr("\"uniform bool wobble\"")));
  EXPECT_THAT(Check(kEmpty, Number("wobble", 15)),
              ElementsAre(HasSubstr("\"uniform int wobble\"")));
  EXPECT_THAT(Check(kEmpty, R"({"name": "wobble", "ui_type": "Color", "default_value": 1})"),
              ElementsAre(HasSubstr("\"uniform int wobble\"")));
}

TEST_F(UnreadParameters, AreComparedWithTheUniformsThatNoParameterSets) {
  const char* shader = "uniform float thickness;\nuniform float thicknes2;\n";
  EXPECT_THAT(
      Check(shader, Number("thikness")),
      ElementsAre("d:8: warning: /params/0/name: no shader reads \"thikness\"; did you mean "
                  "\"thickness\"?"));
  EXPECT_THAT(Check(shader, Number("thikness") + ",\n" + Number("thickness")),
              ElementsAre(HasSubstr("did you mean \"thicknes2\"?")));
  EXPECT_THAT(
      Check(shader, Number("thikness") + "," + Number("thickness") + "," + Number("thicknes2")),
      ElementsAre(HasSubstr("declare \"uniform float thikness\"")));
}

TEST_F(UnreadParameters, AreThoseInCommentsToo) {
  EXPECT_THAT(Check("// uniform float speed;\n/* speed */", Number("speed")), SizeIs(1));
}

TEST_F(UnreadParameters, AreNotThoseThatAnyShaderReads) {
  const std::string files = R"("opengl_vert": ["a.vert"], "blend_script": "sub\\blend.frag")";
  host::WriteFile(Path("p/a.vert"), "uniform float by_vertex;");
  host::WriteFile(Path("p/sub/blend.frag"), "uniform float by_blend;");
  EXPECT_THAT(Check("uniform float by_pass;",
                    Number("by_pass") + "," + Number("by_vertex") + "," + Number("by_blend") + "," +
                        Number("by_none"),
                    files),
              ElementsAre(HasSubstr("\"by_none\"")));
}

TEST_F(UnreadParameters, AreNotThoseThatTheBlendOfThePluginReads) {
  EXPECT_THAT(Check(kEmpty, Number("blend", 7)), IsEmpty());
  host::WriteFile(Path("p/own.frag"), kEmpty);
  EXPECT_THAT(Check(kEmpty, Number("blend", 7), R"("blend_script": "own.frag")"), SizeIs(1));
}

TEST_F(UnreadParameters, AreNotThoseOfBuiltinShaders) {
  EXPECT_THAT(
      CheckBuiltin("audio_visualization_geometry.frag",
                   Number("position_x") + "," + Number("color", 15) + "," + Text("gradient_color")),
      IsEmpty());
  EXPECT_THAT(CheckBuiltin("audio_visualization_geometry.frag", Number("positon_x")),
              ElementsAre(HasSubstr("; did you mean \"position_x\"?")));
}

// Nothing can be declared in a shader of the plug-in.
TEST_F(UnreadParameters, OfBuiltinShadersAreToBeRemoved) {
  EXPECT_THAT(CheckBuiltin("audio_visualization_geometry.frag", Number("wobble")),
              ElementsAre(HasSubstr("no shader reads \"wobble\": correct the name, or remove")));
}

TEST_F(UnreadParameters, AreNotColoursReadByTheirChannels) {
  for (const char* uniform : {"color", "color_r", "color_g", "color_b"}) {
    const std::string shader = "uniform float " + std::string(uniform) + ";";
    EXPECT_THAT(Check(shader, Number("color", 15)), IsEmpty()) << uniform;
    EXPECT_THAT(Check(shader, Number("color", 6)), IsEmpty()) << uniform;
    EXPECT_THAT(Check(shader, Text("color")), SizeIs(1)) << uniform;
  }
  EXPECT_THAT(Check(kEmpty, Number("color", 5)), ElementsAre(HasSubstr("\"uniform int color\"")));
  EXPECT_THAT(Check("uniform float color_r;", Number("colour", 15)),
              ElementsAre(HasSubstr("did you mean \"color\"?")));
  EXPECT_THAT(Check("uniform float tint_r;", Number("tint", 15)), SizeIs(1));
}

TEST_F(UnreadParameters, AreNotGradientsReadByTheirTextureOrCount) {
  EXPECT_THAT(Check("uniform sampler2D gradient_color_tex;", Text("gradient_color")), IsEmpty());
  EXPECT_THAT(Check("uniform int gradient_color_count;", Text("gradient_color")), IsEmpty());
  EXPECT_THAT(Check("uniform int gradient_color;", Text("gradient_color")),
              ElementsAre(HasSubstr("\"uniform sampler2D gradient_color_tex\"")));
  EXPECT_THAT(Check("uniform int gradient_color_count;", Number("gradient_color")),
              ElementsAre(HasSubstr("a gradient is a text")));
}

TEST_F(UnreadParameters, AreTextsAndDoublesWhateverShadersRead) {
  EXPECT_THAT(Check("uniform int title;", Text("title")),
              ElementsAre(HasSubstr("texts reach shaders as \"gradient_color\" only")));
  EXPECT_THAT(Check("uniform int gradient_color_count;", Text("gradient_colour")),
              ElementsAre(HasSubstr("did you mean \"gradient_color\"?")));
  EXPECT_THAT(Check("uniform float speed, sped;", Number("speed", 6)),
              ElementsAre(HasSubstr("values of type 6 reach no uniform; make it type 5")));
}

TEST_F(UnreadParameters, AreNotThoseThatTheMaskShapeEffectReadsItself) {
  const std::string parameters =
      Number("point_gap") + "," + Number("point_size") + "," + Number("max_length", 3);
  EXPECT_THAT(Check(kEmpty, parameters, "", "my_audio_visualization_mask_shape_2"), IsEmpty());
  EXPECT_THAT(Check(kEmpty, parameters), SizeIs(3));
}

TEST_F(UnreadParameters, AreNotElementsAndMembersOfUniforms) {
  const char* shader =
      "struct Light { float size; };\nuniform Light lights[2];\nuniform float b[4];";
  EXPECT_THAT(Check(shader, Number("b") + "," + Number("b[0]") + "," + Number("lights[0].size")),
              IsEmpty());
  EXPECT_THAT(Check(shader, Number("lights[0].reach")), SizeIs(1));
}

TEST_F(UnreadParameters, OfNamesThatNoUniformCanHaveAreToBeCorrected) {
  for (const char* name : {"my gap", "größe", "2nd", "gl_size"}) {
    EXPECT_THAT(Check("float my, gap;", Number(name)),
                ElementsAre(HasSubstr(": correct the name, or remove the parameter")))
        << name;
  }
}

// A macro may make the name of a uniform.
TEST_F(UnreadParameters, AreNotLookedForWhereNamesAreMadeOfPieces) {
  EXPECT_THAT(Check("#define BAR(n) uniform float bar_##n;\nBAR(size)", Number("bar_size")),
              IsEmpty());
  EXPECT_THAT(Check("#define BAR(n) uniform float n;\nBAR(bar_size)", Number("bar_size")),
              IsEmpty());
  EXPECT_THAT(Check("// ##", Number("bar_size")), SizeIs(1));
}

TEST_F(UnreadParameters, AreNotLookedForInEncipheredPackages) {
  EXPECT_THAT(Check(kEmpty, Number("speed"), R"("ENCRYPT": "1")"), IsEmpty());
  EXPECT_THAT(Check(kEmpty, Number("speed"), R"("ENCRYPT": "0")"), SizeIs(1));
}

TEST_F(UnreadParameters, AreNotLookedForWhereAShaderCannotBeRead) {
  EXPECT_THAT(Check(kEmpty, Number("speed"), R"("blend_script": "none.frag")"), IsEmpty());
}

}  // namespace
}  // namespace krv::tool
