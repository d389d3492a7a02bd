// The built program krv, run as a user runs it.
#include <gmock/gmock.h>

#include <chrono>
#include <nlohmann/json.hpp>
#include <opencv2/core/version.hpp>
#include <thread>

extern "C" {
#include <libavutil/avutil.h>
}

#include "host_test_files.h"
#include "support/matches_pattern.h"
#include "support/process.h"
#include "utf8_path.h"

namespace krv::host {
namespace {

using test::HasPattern;
using test::MatchesPattern;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;
using Outcome = test::ProgramOutcome;

constexpr char kSound[] = "#version 120\nvoid main() {\n  gl_FragColor = vec4(1.0);\n}\n";
constexpr char kBrokenInLine3[] = "#version 120\nvoid main() {\n  gl_FragColor = vec4(nope);\n}\n";

class KrvProgram : public FilesTest {
 protected:
  static Outcome Run(const std::string& arguments, const test::Environment& environment = {}) {
    return test::RunProgram(KRV_PROGRAM, arguments, environment);
  }

  std::string Quoted(const std::string& name) { return "\"" + Utf8(Path(name)) + "\""; }

  Outcome Check(const std::string& name) { return Run("check " + Quoted(name)); }

  // Bad usage: code 2, nothing on standard output, one line on standard error.
  void ExpectUsageError(const std::string& arguments, const std::string& reason) {
    const Outcome outcome = Run(arguments);
    EXPECT_EQ(outcome.code, 2) << arguments;
    EXPECT_EQ(outcome.output, "") << arguments;
    EXPECT_THAT(outcome.error_output, StartsWith("krv: ")) << arguments;
    EXPECT_THAT(outcome.error_output, HasSubstr(reason)) << arguments;
    EXPECT_EQ(std::count(outcome.error_output.begin(), outcome.error_output.end(), '\n'), 1)
        << outcome.error_output;
  }
};

TEST_F(KrvProgram, ShowsItsVersionAndItsUsage) {
  const Outcome version = Run("--version");
  EXPECT_EQ(version.code, 0);
  EXPECT_THAT(version.output, MatchesPattern("krv [0-9]+\\.[0-9]+\\.[0-9]+\n(.+ +[0-9].*\n)+"));
  const Outcome help = Run("--help");
  EXPECT_EQ(help.code, 0);
  EXPECT_THAT(help.output, HasSubstr("list"));
  EXPECT_THAT(help.output, HasSubstr("check"));
  EXPECT_EQ(Run("check --help").code, 0);
}

TEST_F(KrvProgram, ShowsTheVersionsOfItsLibraries) {
  const std::string text = Run("--version").output;
  for (const char* library :
       {"FFmpeg", "libavcodec", "libavformat", "libavutil", "libswresample", "libswscale", "OpenCV",
        "FFTW", "libsodium", "nlohmann JSON", "CLI11"}) {
    EXPECT_THAT(text, HasPattern("\n" + std::string(library) + " +[0-9]+\\.[0-9]"));
  }
  // As they say themselves.
  const unsigned version = avutil_version();
  EXPECT_THAT(text, HasPattern("\nlibavutil +" + std::to_string(AV_VERSION_MAJOR(version)) + "." +
                               std::to_string(AV_VERSION_MINOR(version)) + "." +
                               std::to_string(AV_VERSION_MICRO(version)) + "\n"));
  EXPECT_THAT(text, HasPattern("\nOpenCV +" CV_VERSION "\n"));
}

TEST_F(KrvProgram, BadUsageIsOneLineAndCode2) {
  ExpectUsageError("", "subcommand is required");
  ExpectUsageError("chekc", "there is no command \"chekc\"; did you mean \"check\"?");
  ExpectUsageError("frobnicate x", "there is no command \"frobnicate\"");
  ExpectUsageError("list --colour", "--colour");
  ExpectUsageError("list --packages", "--packages");
  ExpectUsageError("check", "PACKAGE");
  ExpectUsageError("check " + Quoted("none"), "there is no such package folder");
  ExpectUsageError("check " + Quoted(""), "there is no description.json");
  ExpectUsageError("list --packages " + Quoted("none"), "there is no such folder");
  ExpectUsageError("list --plugin " + Quoted("none.krv"), "none.krv: there is no such file");
  ExpectUsageError("list --packages " + Quoted(""), "there is no effect package");
}

TEST_F(KrvProgram, ListShowsEveryPackageWithItsParameters) {
  WritePackage("a", "fx.a", kSound, R"("params": [
      {"name": "gain", "type": 5, "min_value": 0, "max_value": 2, "default_value": 0.1},
      {"name": "secret", "type": 7, "ui_type": "NoShow", "default_value": true}])");
  WritePackage("b", "fx.b", kSound);
  const Outcome outcome = Run("list --packages " + Quoted(""));
  EXPECT_EQ(outcome.code, 0) << outcome.error_output;
  EXPECT_THAT(outcome.output, HasSubstr("fx.a  Test\n"));
  EXPECT_THAT(outcome.output, HasPattern("gain +float +0 +2 +0\\.1\n"));
  EXPECT_THAT(outcome.output, HasPattern("secret +bool +true +hidden\n"));
  EXPECT_THAT(outcome.output, HasSubstr("fx.b  Test\n"));
}

TEST_F(KrvProgram, ListOfSeveralFoldersShowsThemAll) {
  WritePackage("one/a", "fx.a", kSound);
  WritePackage("two/b", "fx.b", kSound);
  const Outcome outcome = Run("list --packages " + Quoted("one") + " --packages " + Quoted("two"));
  EXPECT_EQ(outcome.code, 0) << outcome.error_output;
  EXPECT_THAT(outcome.output, HasSubstr("fx.a"));
  EXPECT_THAT(outcome.output, HasSubstr("fx.b"));
}

TEST_F(KrvProgram, ListIsSortedByName) {
  for (const char* name : {"c", "a", "d", "b"})
    WritePackage(name, std::string("fx.") + name, kSound);
  const Outcome outcome = Run("list --json --packages " + Quoted(""));
  EXPECT_EQ(outcome.code, 0) << outcome.error_output;
  std::vector<std::string> names;
  for (const auto& effect : nlohmann::json::parse(outcome.output))
    names.push_back(effect["unique_name"]);
  EXPECT_THAT(names, ::testing::ElementsAre("fx.a", "fx.b", "fx.c", "fx.d"));
}

TEST_F(KrvProgram, ListAsJsonHoldsWhatWasAnnounced) {
  WritePackage("a", "fx.a", kSound, R"("params": [
      {"name": "gain", "type": 5, "min_value": 0, "max_value": 2, "default_value": 0.1}])");
  const Outcome outcome = Run("list --json --packages " + Quoted("a"));
  EXPECT_EQ(outcome.code, 0) << outcome.error_output;
  const auto list = nlohmann::json::parse(outcome.output);
  ASSERT_EQ(list.size(), 1u);
  EXPECT_EQ(list[0]["unique_name"], "fx.a");
  const nlohmann::json gain = {{"name", "gain"}, {"kind", "float"}, {"minimum", 0.0},
                               {"maximum", 2.0}, {"default", 0.1},  {"hidden", false}};
  EXPECT_EQ(list[0]["parameters"], nlohmann::json::array({gain}));
}

TEST_F(KrvProgram, ListBesideABrokenPackageShowsTheOthersAndCode1) {
  WritePackage("a", "fx.a", kSound);
  WriteFile(Path("b/description.json"), "{");
  const Outcome outcome = Run("list --packages " + Quoted(""));
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.output, HasSubstr("fx.a"));
  EXPECT_THAT(outcome.error_output, HasSubstr(Utf8(Path("b"))));
}

TEST_F(KrvProgram, CheckOfASoundPackageSaysOk) {
  WritePackage("p", "fx", kSound);
  const Outcome outcome = Check("p");
  EXPECT_EQ(outcome.code, 0) << outcome.error_output;
  EXPECT_EQ(outcome.output, Utf8(Path("p")) + ": ok\n");
  EXPECT_EQ(outcome.error_output, "");
}

TEST_F(KrvProgram, PluginAndPackagesMayLieInFoldersOfAnyNameAndDepth) {
  const std::string folder = Utf8(test::AwkwardFolder());
  WriteFile(Path(folder + "/plug in.krv"), ReadFile(KRV_PLUGIN_FILE));
  WritePackage(folder + "/ö", "fx", kSound);
  const std::string plugin = " --plugin " + Quoted(folder + "/plug in.krv") + " ";
  const Outcome check = Run("check" + plugin + Quoted(folder + "/ö"));
  EXPECT_EQ(check.code, 0) << check.output << check.error_output;
  EXPECT_EQ(check.output, Utf8(Path(folder + "/ö")) + ": ok\n");
  const Outcome list = Run("list" + plugin + "--packages " + Quoted(""));
  EXPECT_EQ(list.code, 0) << list.error_output;
  EXPECT_THAT(list.output, HasSubstr("fx  Test\n"));
}

TEST_F(KrvProgram, CheckOfASoundPackageInTexturesSaysOk) {
  WritePackage("p", "fx", kSound);
  const Outcome outcome = Run("check --gpu " + Quoted("p"));
  EXPECT_EQ(outcome.code, 0) << outcome.output << outcome.error_output;
}

TEST_F(KrvProgram, CheckOfABuiltInShaderNeedsNoFile) {
  WriteFile(Path("p/description.json"),
            R"({"effect_type": "audio_visualization", "unique_name": "fx", "display_name": "X",
                "params": [], "opengl_frag": ["audio_visualization_geometry.frag"]})");
  const Outcome outcome = Check("p");
  EXPECT_EQ(outcome.code, 0) << outcome.output << outcome.error_output;
}

TEST_F(KrvProgram, CheckOfAPersonEffectHasAPerson) {
  WritePackage("p", "fx", kSound, R"("input_list": ["human_segment"], "params": [])");
  const Outcome outcome = Check("p");
  EXPECT_EQ(outcome.code, 0) << outcome.output << outcome.error_output;
}

TEST_F(KrvProgram, CheckNamesTheLineOfInvalidJson) {
  WriteFile(Path("p/description.json"), "{\n  \"a\": 1,\n  b\n}");
  const Outcome outcome = Check("p");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.output,
              StartsWith(Utf8(Path("p/description.json")) + ":3:3: error: not valid JSON: "));
}

TEST_F(KrvProgram, CheckNamesTheShaderThatIsMissing) {
  WritePackage("p", "fx", kSound);
  std::filesystem::remove(Path("p/a.frag"));
  const Outcome outcome = Check("p");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.output, Utf8(Path("p/description.json")) +
                                ":6: error: /opengl_frag/0: there is no file " +
                                Utf8(Path("p/a.frag")) + "\n");
}

TEST_F(KrvProgram, CheckNamesTheLineOfAShaderThatDoesNotCompile) {
  WritePackage("p", "fx", kBrokenInLine3);
  const Outcome outcome = Check("p");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.output, HasSubstr(Utf8(Path("p/a.frag")) + ":3: error: "));
  EXPECT_THAT(outcome.output, HasSubstr("nope"));
  EXPECT_THAT(outcome.output, Not(HasSubstr("ok\n")));
}

TEST_F(KrvProgram, CheckTellsTheBrokenShaderFromTheOthers) {
  WritePackage("p", "fx", kSound, R"("params": [], "blend_script": "blend.frag")");
  WriteFile(Path("p/blend.frag"), kBrokenInLine3);
  const Outcome outcome = Check("p");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.output, HasSubstr(Utf8(Path("p/blend.frag")) + ":3: error: "));
  EXPECT_THAT(outcome.output, Not(HasSubstr("a.frag")));
}

TEST_F(KrvProgram, CheckNamesABrokenVertexShaderOnce) {
  WritePackage("p", "fx", kSound, R"("params": [], "opengl_vert": ["a.vert"])");
  WriteFile(Path("p/a.vert"), "#version 120\nvoid main() { gl_Position = nope; }\n");
  const Outcome outcome = Check("p");
  EXPECT_EQ(outcome.code, 1);
  const std::string place = Utf8(Path("p/a.vert")) + ":2: error: `nope' undeclared";
  const size_t first = outcome.output.find(place);
  ASSERT_NE(first, std::string::npos) << outcome.output;
  EXPECT_EQ(outcome.output.find(place, first + 1), std::string::npos) << outcome.output;
}

TEST_F(KrvProgram, CheckOfAVertexShaderThatDoesNotFitABuiltInShaderNamesIt) {
  WriteFile(Path("p/description.json"),
            R"({"effect_type": "audio_visualization", "unique_name": "fx", "display_name": "X",
                "params": [], "opengl_frag": ["audio_visualization_geometry.frag"],
                "opengl_vert": ["a.vert"]})");
  WriteFile(Path("p/a.vert"), "#version 120\nvoid main() {\n  gl_Position = nope;\n}\n");
  const Outcome outcome = Check("p");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.output, HasSubstr(Utf8(Path("p/a.vert")) + ":3: error: `nope' undeclared"));
}

TEST_F(KrvProgram, CheckFindsABrokenShaderBesideAMissingOne) {
  WritePackage("p", "fx", kBrokenInLine3, R"("params": [], "blend_script": "none.frag")");
  const Outcome outcome = Check("p");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.output, HasSubstr("/blend_script: there is no file"));
  EXPECT_THAT(outcome.output, HasSubstr(Utf8(Path("p/a.frag")) + ":3: error: "));
}

TEST_F(KrvProgram, CheckNamesAKindThatThereIsNot) {
  WritePackage("p", "fx", kSound,
               "\"params\": [\n{\"name\": \"a\", \"type\": 99, \"default_value\": 1}]");
  const Outcome outcome = Check("p");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.output,
              HasSubstr("description.json:8: error: /params/0/type: 99 is no kind"));
}

TEST_F(KrvProgram, CheckOfAFrameThatFailsSaysThePluginsReason) {
  WritePackage("p", "fx", kSound, R"("params": [
      {"name": "gradient_color", "type": 8, "default_value": "two,1,0"}])");
  const Outcome outcome = Check("p");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.output, HasSubstr("description.json:1: error: effect \"fx\" cannot render"));
  EXPECT_THAT(outcome.output, HasSubstr("stoi"));
}

TEST_F(KrvProgram, CheckReportsANameThatTwoPackagesShare) {
  WritePackage("a", "fx", kSound);
  WritePackage("b", "fx", kSound);
  const Outcome outcome = Run("check " + Quoted("a") + " " + Quoted("b"));
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.output, HasSubstr(Utf8(Path("a")) + ": ok\n"));
  EXPECT_THAT(outcome.output, HasSubstr(Utf8(Path("b/description.json")) +
                                        ":3: error: /unique_name: \"fx\" is the "
                                        "name of the package in " +
                                        Utf8(Path("a"))));
}

TEST_F(KrvProgram, CheckOfAFolderChecksEveryPackageInIt) {
  WritePackage("all/a", "fx.a", kSound);
  WritePackage("all/b", "fx.b", kBrokenInLine3);
  const Outcome outcome = Check("all");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.output, HasSubstr(Utf8(Path("all/a")) + ": ok\n"));
  EXPECT_THAT(outcome.output, HasSubstr(Utf8(Path("all/b/a.frag")) + ":3: error: "));
}

TEST_F(KrvProgram, CheckOfWarningsAloneIsCode0) {
  WritePackage("p", "fx", kSound, R"("params": [], "quality": "HIGH")");
  const Outcome outcome = Check("p");
  EXPECT_EQ(outcome.code, 0);
  EXPECT_THAT(outcome.output, HasSubstr("warning: /quality"));
}

constexpr char kWobble[] =
    "\"params\": [\n{\"name\": \"wobble\", \"type\": 5, \"default_value\": 1}]";

TEST_F(KrvProgram, CheckWarnsOfAParameterThatNoShaderReads) {
  WritePackage("p", "fx", kSound, kWobble);
  const Outcome outcome = Check("p");
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.output, Utf8(Path("p/description.json")) +
                                ":8: warning: /params/0/name: no shader reads \"wobble\": declare "
                                "\"uniform float wobble\" in one, or remove the parameter\n" +
                                Utf8(Path("p")) + ": ok\n");
  EXPECT_EQ(outcome.error_output, "");
}

TEST_F(KrvProgram, CheckAsJsonHoldsAParameterThatNoShaderReads) {
  WritePackage("p", "fx", kSound, kWobble);
  const Outcome outcome = Run("check --json " + Quoted("p"));
  EXPECT_EQ(outcome.code, 0);
  const auto list = nlohmann::json::parse(outcome.output);
  ASSERT_EQ(list.size(), 1u);
  EXPECT_EQ(list[0]["ok"], true);
  ASSERT_EQ(list[0]["findings"].size(), 1u);
  const auto& finding = list[0]["findings"][0];
  EXPECT_EQ(finding["severity"], "warning");
  EXPECT_EQ(finding["file"], Utf8(Path("p/description.json")));
  EXPECT_EQ(finding["line"], 8);
  EXPECT_EQ(finding["pointer"], "/params/0/name");
  EXPECT_THAT(finding["message"].get<std::string>(), StartsWith("no shader reads \"wobble\""));
}

// What does not work is said first.
TEST_F(KrvProgram, CheckOfABrokenShaderDoesNotWarnOfParameters) {
  WritePackage("p", "fx", kBrokenInLine3, kWobble);
  const Outcome outcome = Check("p");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.output, HasSubstr(Utf8(Path("p/a.frag")) + ":3: error: "));
  EXPECT_THAT(outcome.output, Not(HasSubstr("wobble")));
}

// A package that is broken is tried in copies.
TEST_F(KrvProgram, AnInterruptOfACheckLeavesNoCopies) {
  for (int i = 0; i < 30; ++i) {
    const std::string name = "p" + std::to_string(i);
    WritePackage("packages/" + name, "fx." + name, kBrokenInLine3);
  }
  const auto temporary = Path("temporary");
  std::filesystem::create_directory(temporary);
  test::Process program(KRV_PROGRAM, "check " + Quoted("packages"), test::Interruptible::kYes,
                        {{"TMPDIR", Utf8(temporary)}, {"TMP", Utf8(temporary)}});
  for (int i = 0; i < 60000 && std::filesystem::is_empty(temporary); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  program.Interrupt();
  const Outcome outcome = program.Wait();
  EXPECT_EQ(outcome.code, 130) << outcome.error_output;
  EXPECT_THAT(outcome.error_output,
              MatchesPattern("krv: interrupted after [0-9]+ of 30 packages\n"));
  EXPECT_TRUE(std::filesystem::is_empty(temporary));
}

TEST_F(KrvProgram, CheckAsJsonHoldsTheFindings) {
  WritePackage("p", "fx", kBrokenInLine3);
  const Outcome outcome = Run("check --json " + Quoted("p"));
  EXPECT_EQ(outcome.code, 1);
  const auto list = nlohmann::json::parse(outcome.output);
  ASSERT_EQ(list.size(), 1u);
  EXPECT_EQ(list[0]["ok"], false);
  EXPECT_EQ(list[0]["findings"][0]["file"], Utf8(Path("p/a.frag")));
  EXPECT_EQ(list[0]["findings"][0]["line"], 3);
}

TEST_F(KrvProgram, CheckLeavesNothingInTheFolderForTemporaryFiles) {
  WritePackage("p", "fx", kBrokenInLine3);
  std::filesystem::create_directories(Path("tmp"));
  const std::string folder = Utf8(Path("tmp"));
  const test::Environment environment = {{"TMPDIR", folder}, {"TMP", folder}, {"TEMP", folder}};
  EXPECT_EQ(Run("check " + Quoted("p"), environment).code, 1);
  EXPECT_TRUE(std::filesystem::is_empty(Path("tmp")));
}

}  // namespace
}  // namespace krv::host
