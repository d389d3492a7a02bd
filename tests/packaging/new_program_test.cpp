// `krv new`, as an author uses it.
#include <nlohmann/json.hpp>

#include "packages/description_schema.h"
#include "packaging/packaging_fixture.h"
#include "support/file_system.h"

namespace krv::host {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

const std::string kShipped = " --packages \"" KRV_PACKAGES "\" ";

class NewProgram : public PackagingTest {
 protected:
  json DescriptionOf(const std::string& folder) const {
    return json::parse(ReadFile(Path(folder + "/description.json")));
  }
};

TEST_F(NewProgram, ThePackagePassesTheCheckAndDraws) {
  RunWell("new " + Argument("my_look") + kShipped);
  RunWell("check " + Argument("my_look"));
  const test::DescriptionSchema schema(KRV_PACKAGES "/description.schema.json");
  const json description = DescriptionOf("my_look");
  EXPECT_THAT(schema.Refusals(description), IsEmpty());
  EXPECT_EQ(description["unique_name"], "my_look");
  EXPECT_EQ(description["display_name"], "My look");
  EXPECT_EQ(description["$schema"], "description.schema.json");
  EXPECT_EQ(ReadFile(Path("my_look/description.schema.json")),
            ReadFile(test::Utf8Path(KRV_PACKAGES "/description.schema.json")));

  const Picture drawn = RenderFrame(Path("my_look"), "my_look", "drawn");
  WritePackage("nothing", "fx.nothing", "void main() { gl_FragColor = vec4(0.0); }");
  const Picture plain = RenderFrame(Path("nothing"), "fx.nothing", "plain");
  int bright = 0;
  for (int y = 0; y < drawn.height(); ++y) {
    for (int x = 0; x < drawn.width(); ++x) {
      if (drawn.Pixel(x, y)[1] > plain.Pixel(x, y)[1] + 60) ++bright;
    }
  }
  EXPECT_GT(bright, 100);
}

TEST_F(NewProgram, EveryParameterOfTheTemplateChangesThePicture) {
  RunWell("new " + Argument("my_look") + kShipped);
  const Picture before = RenderFrame(Path("my_look"), "my_look", "before");
  const json description = DescriptionOf("my_look");
  for (const json& parameter : description["params"]) {
    const std::string name = parameter["name"];
    const std::string value =
        name == "gradient_color" ? "2,16711680,0;65280,100" : parameter["max_value"].dump();
    const std::string other = name == "alpha" ? "20" : value;
    RenderWell("@clip.mkv --frames 3:4 -o @" + name + "/ --param \"" + name + "=" + other +
               "\" --effect my_look --packages " + Argument("my_look"));
    EXPECT_FALSE(SamePicture(before, ReadPictures(name).at(3))) << name;
  }
}

TEST_F(NewProgram, SaysTheNextSteps) {
  const test::ProgramOutcome outcome = Run("new " + Argument("my_look") + kShipped);
  EXPECT_THAT(outcome.output, StartsWith("Made the effect \"my_look\":\n"));
  for (const char* text : {"silk.frag\n", "description.json\n", "krv check ", "krv studio ",
                           "krv demo --packages ", "--effect my_look -o out.mp4\n"}) {
    EXPECT_THAT(outcome.output, HasSubstr(text));
  }
}

TEST_F(NewProgram, TheNextStepsCanBePasted) {
  std::filesystem::create_directory(Path("a folder"));
  const std::string look = Argument("a folder/my_look");
  const test::ProgramOutcome made = Run("new " + look + kShipped);
  EXPECT_THAT(made.output, HasSubstr("krv check " + look + "\n"));
  EXPECT_THAT(made.output, HasSubstr("krv studio " + look + "\n"));
  EXPECT_THAT(made.output, HasSubstr("krv demo --packages " + look + " --effect"));
  EXPECT_THAT(made.output, HasSubstr("clip.mp4 --packages " + look + " --effect"));
}

TEST_F(NewProgram, ACopyHasBuiltinShadersBehindAFoldersNameToo) {
  WriteFile(Path("mine/description.json"),
            R"({"effect_type": "audio_visualization", "unique_name": "fx.mine",
                "display_name": "Mine", "params": [],
                "opengl_frag": ["sub\\audio_visualization_geometry.frag",
                                "audio_visualization_geometry.frag"]})");
  RunWell("new " + Argument("copy") + kShipped + "--from " + Argument("mine"));
  EXPECT_EQ(DescriptionOf("copy")["opengl_frag"],
            json::parse(R"(["geometry.frag", "geometry.frag"])"));
  EXPECT_THAT(ReadFile(Path("copy/geometry.frag")), StartsWith("#version 120"));
}

TEST_F(NewProgram, ACopyOfAnEffectHasItsShaderAsAFileAndItsLook) {
  RunWell("new " + Argument("my_bars") + kShipped + "--from audio_visualization_bars");
  RunWell("check " + Argument("my_bars"));
  const json description = DescriptionOf("my_bars");
  EXPECT_EQ(description["opengl_frag"], json::parse(R"(["geometry.frag"])"));
  EXPECT_THAT(ReadFile(Path("my_bars/geometry.frag")), StartsWith("#version 120"));
  const Picture copy = RenderFrame(Path("my_bars"), "my_bars", "copy");
  const Picture original = RenderFrame(KRV_PACKAGES, "audio_visualization_bars", "original");
  int most = 0;
  for (int y = 0; y < copy.height(); ++y) {
    for (int x = 0; x < copy.width() * 4; ++x) {
      most = std::max(most, std::abs(copy.Row(y)[x] - original.Row(y)[x]));
    }
  }
  // The built-in shader is drawn in a folded form, which may round otherwise.
  EXPECT_LE(most, 1);

  std::string shader = ReadFile(Path("my_bars/geometry.frag"));
  const size_t pixel = shader.find("vec4(channelOrder(c)");
  ASSERT_NE(pixel, std::string::npos);
  shader.replace(pixel, 20, "vec4(channelOrder(c.gbr)");
  test::WriteFile(Path("my_bars/geometry.frag"), shader);
  EXPECT_FALSE(SamePicture(copy, RenderFrame(Path("my_bars"), "my_bars", "changed")));
}

TEST_F(NewProgram, TheDescriptionOfACopyKeepsItsForm) {
  RunWell("new " + Argument("my_star") + kShipped + "--from \"" KRV_PACKAGES "/star_3d\"");
  std::string original = ReadFile(test::Utf8Path(KRV_PACKAGES "/star_3d/description.json"));
  std::string copy = ReadFile(Path("my_star/description.json"));
  const auto params = [](const std::string& text) { return text.substr(text.find("\"params\"")); };
  EXPECT_EQ(params(copy), params(original));
  EXPECT_EQ(std::count(copy.begin(), copy.end(), '\n'),
            std::count(original.begin(), original.end(), '\n'));
}

TEST_F(NewProgram, ACopyStaysOfItsKind) {
  RunWell("new " + Argument("my_star") + kShipped + "--from \"" KRV_PACKAGES "/star_3d\"");
  EXPECT_EQ(DescriptionOf("my_star")["unique_name"], "my_star_audio_visualization_3d_geometry");
  RunWell("check " + Argument("my_star"));
  const std::string original = json::parse(
      ReadFile(test::Utf8Path(KRV_PACKAGES "/star_3d/description.json")))["unique_name"];
  EXPECT_TRUE(
      SamePicture(RenderFrame(Path("my_star"), "my_star_audio_visualization_3d_geometry", "copy"),
                  RenderFrame(KRV_PACKAGES, original, "original")));
}

TEST_F(NewProgram, EveryShippedEffectCanBeCopied) {
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(test::Utf8Path(KRV_PACKAGES))) {
    if (!entry.is_directory()) continue;
    const std::string name = "copy_of_" + Utf8(entry.path().filename());
    RunWell("new " + Argument(name) + kShipped + "--from \"" + Utf8(entry.path()) + "\"");
    ++count;
  }
  EXPECT_GE(count, 20);
  RunWell("check \"" + Utf8(folder_->path()) + "\"");
}

TEST_F(NewProgram, NothingIsWrittenOver) {
  test::WriteFile(Path("file"), "mine");
  ExpectRefused("new " + Argument("file") + kShipped, "exists already");
  EXPECT_EQ(ReadFile(Path("file")), "mine");
  RunWell("new " + Argument("my_look") + kShipped);
  test::WriteFile(Path("my_look/silk.frag"), "mine");
  ExpectRefused("new " + Argument("my_look") + kShipped, "exists already");
  EXPECT_EQ(ReadFile(Path("my_look/silk.frag")), "mine");
}

TEST_F(NewProgram, WhatCannotBeMadeIsRefusedWithoutATrace) {
  ExpectRefused("new " + Argument("no/such/look") + kShipped, "there is no folder");
  ExpectRefused("new " + Argument("my look!") + kShipped, "give a name of letters, digits");
  for (const char* name : {"_", "-", "-look", "_look"}) {
    ExpectRefused("new " + Argument(name) + kShipped, "begins with a letter or a digit");
    EXPECT_FALSE(std::filesystem::exists(Path(name))) << name;
  }
  ExpectRefused("new " + Argument("audio_visualization_bars") + kShipped,
                "there is an effect of this name");
  ExpectRefused("new " + Argument("a") + kShipped + "--from audio_visualisation_bars",
                "did you mean \"audio_visualization_bars\"?");
  WritePackage("secret", "fx.secret", "x", R"("ENCRYPT": "1", "params": [])");
  ExpectRefused("new " + Argument("b") + kShipped + "--from " + Argument("secret"), "enciphered");
  for (const char* name : {"no", "my look!", "a", "b"}) {
    EXPECT_FALSE(std::filesystem::exists(Path(name))) << name;
  }
}

TEST_F(NewProgram, ACopyInsideOfItsOriginalIsRefused) {
  WritePackage("mine", "fx.mine", "void main() { gl_FragColor = vec4(0.0); }");
  ExpectRefused("new " + Argument("mine/inner") + kShipped + "--from " + Argument("mine"),
                "lies in");
  EXPECT_FALSE(std::filesystem::exists(Path("mine/inner")));
}

}  // namespace
}  // namespace krv::host
