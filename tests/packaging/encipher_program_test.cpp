// `krv encipher`, as an author uses it.
#include <nlohmann/json.hpp>

#include "packaging/packaging_fixture.h"
#include "support/file_system.h"

namespace krv::host {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr char kVertex[] =
    "#version 120\nattribute vec3 position;\nvarying vec2 at;\n"
    "void main() { at = position.xy; gl_Position = vec4(2.0 * position.xy - 1.0, 0.0, 1.0); }\n";
constexpr char kFigure[] =
    "#version 120\nvarying vec2 at;\nvoid main() { gl_FragColor = vec4(at, 0.5, 0.9); }\n";
constexpr char kBlend[] =
    "#version 120\nuniform sampler2D effect_tex;\nuniform sampler2D background_tex;\n"
    "uniform vec2 iResolution;\n"
    "void main() {\n  vec2 at = gl_FragCoord.xy / iResolution;\n"
    "  gl_FragColor = 0.5 * (texture2D(effect_tex, at) + texture2D(background_tex, at));\n}\n";

class EncipherProgram : public PackagingTest {
 protected:
  void SetUp() override {
    PackagingTest::SetUp();
    WritePackage("mine", "fx.mine", kFigure,
                 "\"opengl_vert\": [\"parts\\\\cover.vert\"],\n\"blend_script\": \"mix.frag\",\n"
                 "\"params\": []");
    WriteFile(Path("mine/parts/cover.vert"), kVertex);
    WriteFile(Path("mine/mix.frag"), kBlend);
    WriteFile(Path("mine/remarks.txt"), "as it is");
  }
};

TEST_F(EncipherProgram, TheCopyRendersTheSamePicture) {
  RunWell("encipher " + Argument("mine") + " --output " + Argument("out"));
  const Picture original = RenderFrame(Path("mine"), "fx.mine", "original");
  EXPECT_TRUE(SamePicture(original, RenderFrame(Path("out"), "fx.mine", "copy")));
  WritePackage("nothing", "fx.nothing", "void main() { gl_FragColor = vec4(0.0); }");
  EXPECT_FALSE(SamePicture(original, RenderFrame(Path("nothing"), "fx.nothing", "plain")));
  RunWell("check " + Argument("out"));
}

TEST_F(EncipherProgram, EveryShaderFileIsUnreadable) {
  RunWell("encipher " + Argument("mine") + " -o " + Argument("out"));
  for (const char* file : {"a.frag", "mix.frag", "parts/cover.vert"}) {
    const std::string contents = ReadFile(Path(std::string("out/") + file));
    EXPECT_THAT(contents, StartsWith("KRVE")) << file;
    EXPECT_THAT(contents, Not(HasSubstr("main"))) << file;
  }
  EXPECT_EQ(ReadFile(Path("out/remarks.txt")), "as it is");
  EXPECT_EQ(ReadFile(Path("mine/a.frag")), kFigure) << "the original stays";
  json copy = json::parse(ReadFile(Path("out/description.json")));
  EXPECT_EQ(copy["ENCRYPT"], "1");
  copy.erase("ENCRYPT");
  EXPECT_EQ(copy, json::parse(ReadFile(Path("mine/description.json"))));
}

TEST_F(EncipherProgram, TheCopyLiesBesideTheOriginalByDefault) {
  RunWell("encipher " + Argument("mine/"));
  EXPECT_THAT(ReadFile(Path("mine-enciphered/a.frag")), StartsWith("KRVE"));
}

TEST_F(EncipherProgram, TheCopyLiesBesideAPackageNamedByDots) {
  RunWell("encipher " + Argument("mine/."));
  EXPECT_THAT(ReadFile(Path("mine-enciphered/a.frag")), StartsWith("KRVE"));
  std::filesystem::remove_all(Path("mine-enciphered"));
  RunWell("encipher " + Argument("mine/parts/../"));
  EXPECT_THAT(ReadFile(Path("mine-enciphered/a.frag")), StartsWith("KRVE"));
}

TEST_F(EncipherProgram, AWayThroughThePackageMayLeadOutside) {
  RunWell("encipher " + Argument("mine") + " -o " + Argument("mine/parts/../../out"));
  EXPECT_THAT(ReadFile(Path("out/a.frag")), StartsWith("KRVE"));
  RunWell("new " + Argument("mine/../copy") + " --from " + Argument("mine"));
  EXPECT_EQ(ReadFile(Path("copy/a.frag")), kFigure);
  std::filesystem::create_directory(Path("elsewhere"));
  ExpectRefused("encipher " + Argument("mine") + " -o " + Argument("elsewhere/../mine/out"),
                "lies in");
}

TEST_F(EncipherProgram, ADescriptionThatSaysNoIsChanged) {
  WritePackage("plain", "fx.plain", "x", R"("ENCRYPT": "0", "params": [])");
  RunWell("encipher " + Argument("plain"));
  EXPECT_EQ(json::parse(ReadFile(Path("plain-enciphered/description.json")))["ENCRYPT"], "1");
}

TEST_F(EncipherProgram, WhatCannotBeEncipheredIsRefusedWithoutATrace) {
  ExpectRefused("encipher \"" KRV_PACKAGES "/bars\" -o " + Argument("out"),
                "has no shader file of its own");
  ExpectRefused("encipher " + Argument("missing") + " -o " + Argument("out"), "no such package");
  ExpectRefused("encipher " + Argument("mine/parts") + " -o " + Argument("out"),
                "there is no such file");
  ExpectRefused("encipher " + Argument("mine") + " -o " + Argument("mine/out"), "lies in");
  EXPECT_FALSE(std::filesystem::exists(Path("mine/out")));
  std::filesystem::remove(Path("mine/mix.frag"));
  ExpectRefused("encipher " + Argument("mine") + " -o " + Argument("out"), "mix.frag");
  EXPECT_FALSE(std::filesystem::exists(Path("out")));
}

TEST_F(EncipherProgram, FilesOutsideOfThePackageStayAsTheyAre) {
  WriteFile(Path("shared.frag"), kFigure);
  for (const char* entry : {R"(..\\shared.frag)", "../shared.frag", "sub/../../shared.frag",
                            // Inside of the original, but seen from the copy the original's own.
                            R"(..\\outward\\a.frag)"}) {
    WritePackage("outward", "fx.outward", kFigure,
                 "\"opengl_vert\": [\"" + std::string(entry) + "\"], \"params\": []");
    ExpectRefused("encipher " + Argument("outward"), "leads out of the package");
    EXPECT_FALSE(std::filesystem::exists(Path("outward-enciphered"))) << entry;
  }
  EXPECT_EQ(ReadFile(Path("shared.frag")), kFigure);
  EXPECT_EQ(ReadFile(Path("outward/a.frag")), kFigure);
}

// The plug-in looks for them in the package, too.
TEST_F(EncipherProgram, AnAbsoluteNameIsNoFileOutside) {
  WriteFile(Path("shared.frag"), kFigure);
  WritePackage(
      "outward", "fx.outward", kFigure,
      R"("blend_script": ")" + Path("shared.frag").generic_string() + R"(", "params": [])");
  ExpectRefused("encipher " + Argument("outward"), "there is no such file");
  EXPECT_EQ(ReadFile(Path("shared.frag")), kFigure);
}

TEST_F(EncipherProgram, AFileWithTwoNamesIsEncipheredOnce) {
  WritePackage("twice", "fx.twice", kFigure,
               R"("blend_script": ".\\mix.frag", "opengl_vert": ["x/../mix.frag"], "params": [])");
  WriteFile(Path("twice/mix.frag"), kBlend);
  const std::string output = Run("encipher " + Argument("twice")).output;
  EXPECT_EQ(std::count(output.begin(), output.end(), '\n'), 2) << output;
}

TEST_F(EncipherProgram, NothingIsEncipheredTwiceOrWrittenOver) {
  RunWell("encipher " + Argument("mine"));
  ExpectRefused("encipher " + Argument("mine"), "exists already");
  ExpectRefused("encipher " + Argument("mine-enciphered"), "is enciphered already");
}

}  // namespace
}  // namespace krv::host
