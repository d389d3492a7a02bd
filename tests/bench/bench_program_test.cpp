// `krv bench` as a user runs it. How long something takes is no matter here.
#include <gmock/gmock.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "host/host_test_files.h"
#include "support/process.h"
#include "utf8_path.h"

namespace krv::host {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;
using Outcome = test::ProgramOutcome;

constexpr char kShader[] =
    "#version 120\nuniform float level;\nvoid main() {\n  gl_FragColor = vec4(level);\n}\n";
constexpr char kKeys[] = R"("quality": "low", "params": [
    {"name": "level", "type": 5, "min_value": 0, "max_value": 1, "default_value": 0.5}])";

class BenchProgram : public FilesTest {
 protected:
  void SetUp() override {
    FilesTest::SetUp();
    WritePackage("p", "fx.bench", kShader, kKeys);
  }

  std::string Quoted(const std::string& name) { return "\"" + Utf8(Path(name)) + "\""; }

  // Few small frames, unless the options say otherwise.
  Outcome Bench(const std::string& options) {
    return test::RunProgram(KRV_PROGRAM, "bench --frames 2 --rounds 2 " + options);
  }

  // What it writes to its JSON file.
  nlohmann::json Json(const std::string& options) {
    const Outcome outcome = Bench(options + " --json " + Quoted("out.json"));
    EXPECT_EQ(outcome.code, 0) << outcome.error_output;
    return nlohmann::json::parse(ReadFile(Path("out.json")), nullptr, false);
  }

  void ExpectUsageError(const std::string& options, const std::string& reason) {
    const Outcome outcome = Bench(options);
    EXPECT_EQ(outcome.code, 2) << options;
    EXPECT_EQ(outcome.output, "") << options;
    EXPECT_THAT(outcome.error_output, StartsWith("krv: ")) << options;
    EXPECT_THAT(outcome.error_output, HasSubstr(reason)) << options;
    EXPECT_EQ(std::count(outcome.error_output.begin(), outcome.error_output.end(), '\n'), 1)
        << outcome.error_output;
  }
};

TEST_F(BenchProgram, BadUsageIsOneLineAndCode2) {
  const std::string package = Quoted("p");
  ExpectUsageError("", "PACKAGE");
  ExpectUsageError(Quoted("none"), "there is no such package folder");
  ExpectUsageError(package + " --size big", "--size big: give 720p");
  ExpectUsageError(package + " --size 15x20", "--size 15x20");
  ExpectUsageError(package + " --size 64x64x", "--size 64x64x");
  ExpectUsageError(package + " --form disk", "--form disk: give memory or gpu");
  ExpectUsageError(package + " --quality best", "--quality best: give low, medium or high");
  ExpectUsageError(package + " --frames 0", "--frames");
  ExpectUsageError(package + " --instances 65", "--instances");
  ExpectUsageError(package + " --plugin " + Quoted("none.krv"), "none.krv");
  ExpectUsageError(package + " --size 32x32 --param level=2", "level");
  ExpectUsageError(package + " --size 32x32 --param depth=2", "depth");
}

TEST_F(BenchProgram, HelpSaysWhatTheLimitConsistsOf) {
  const Outcome outcome = test::RunProgram(KRV_PROGRAM, "bench --help");
  EXPECT_EQ(outcome.code, 0);
  EXPECT_THAT(outcome.output, HasSubstr("read_back"));
  EXPECT_THAT(outcome.output, HasSubstr("samples two textures"));
}

TEST_F(BenchProgram, BothFormsAreMeasuredAtEverySize) {
  const auto json = Json(Quoted("p") + " --size 64x32 --size 800x640");
  ASSERT_TRUE(json.is_object());
  EXPECT_NE(json["gl_renderer"].get<std::string>(), "");
  EXPECT_EQ(json["frames"], 2);
  EXPECT_EQ(json["rounds"], 2);
  ASSERT_EQ(json["measurements"].size(), 4u);
  const auto& large = json["measurements"][1];
  EXPECT_EQ(large["effect"], "fx.bench");
  EXPECT_EQ(large["form"], "memory");
  EXPECT_EQ(large["width"], 800);
  EXPECT_EQ(large["height"], 640);
  EXPECT_EQ(large["quality"], "low");
  EXPECT_EQ(large["effect_width"], 400);
  EXPECT_EQ(large["effect_height"], 320);
  EXPECT_EQ(large["passes"], 1);
  EXPECT_EQ(json["measurements"][2]["form"], "gpu");
  EXPECT_EQ(json["measurements"][2]["width"], 64);
}

TEST_F(BenchProgram, EachMeasurementHasTheFrameTheLimitAndTheRatio) {
  const auto json = Json(Quoted("p") + " --size 64x32 --form memory");
  ASSERT_EQ(json["measurements"].size(), 1u);
  const auto& measured = json["measurements"][0];
  for (const char* const work : {"frame", "limit"}) {
    const auto& wall = measured[work]["wall_ms"];
    EXPECT_GT(wall["median"], 0) << work;
    EXPECT_LE(wall["lower_quartile"], wall["median"]) << work;
    EXPECT_LE(wall["median"], wall["upper_quartile"]) << work;
    EXPECT_TRUE(measured[work]["cpu_ms"]["median"].is_number()) << work;
  }
  std::vector<std::string> parts;
  for (const auto& part : measured["limit"]["parts"]) parts.push_back(part["name"]);
  EXPECT_THAT(parts, ::testing::ElementsAre("pass1", "read_back", "copy"));
  std::vector<std::string> stages;
  for (const auto& stage : measured["stages"]) stages.push_back(stage["name"]);
  EXPECT_THAT(stages, ::testing::IsSupersetOf({"parameters", "audio", "pass1", "read_back"}));
  const double frame = measured["frame"]["wall_ms"]["median"];
  const double limit = measured["limit"]["wall_ms"]["median"];
  EXPECT_NEAR(measured["ratio"]["wall"], frame / limit, 1e-6);
  EXPECT_NEAR(measured["frame"]["fps"], 1000 / frame, 1e-6);
}

TEST_F(BenchProgram, WhatIsPrintedHasAParagraphForEachMeasurement) {
  const Outcome outcome = Bench(Quoted("p") + " --size 64x32");
  EXPECT_EQ(outcome.code, 0) << outcome.error_output;
  EXPECT_THAT(outcome.output, HasSubstr("2 rounds of 2 frames"));
  EXPECT_THAT(outcome.output, HasSubstr("\nfx.bench, memory, 64 x 32, effect 64 x 32 (low)\n"));
  EXPECT_THAT(outcome.output, HasSubstr("\nfx.bench, gpu, 64 x 32, effect 64 x 32 (low)\n"));
}

TEST_F(BenchProgram, QualityParametersAndInstancesAreTheUsers) {
  const auto json = Json(Quoted("p") +
                         " --size 800x640 --form gpu --quality medium --param level=1"
                         " --instances 3");
  EXPECT_EQ(json["instances"], 3);
  EXPECT_EQ(json["parameters"][0], "level=1");
  EXPECT_EQ(json["measurements"][0]["quality"], "medium");
  EXPECT_EQ(json["measurements"][0]["effect_height"], 480);
}

TEST_F(BenchProgram, EffectThatFollowsAPersonHasOne) {
  WritePackage("person", "fx.person", "#version 120\nvoid main() { gl_FragColor = vec4(1.0); }\n",
               R"("input_list": ["human_segment"], "params": [])");
  const Outcome outcome = Bench(Quoted("person") + " --size 64x64");
  EXPECT_EQ(outcome.code, 0) << outcome.error_output;
}

TEST_F(BenchProgram, EffectThatCannotBeMeasuredEndsWithCode1) {
  WriteFile(Path("broken/description.json"),
            R"({"effect_type": "audio_visualization", "unique_name": "fx.broken",
                "display_name": "X", "params": [], "opengl_frag": ["none.frag"]})");
  const Outcome outcome = Bench(Quoted("broken") + " --size 64x64");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.error_output, HasSubstr("fx.broken"));
}

TEST_F(BenchProgram, JsonThatCannotBeWrittenIsAnError) {
  const Outcome outcome = Bench(Quoted("p") + " --size 64x32 --json " + Quoted("none/out.json"));
  EXPECT_EQ(outcome.code, 2);
  EXPECT_THAT(outcome.error_output, HasSubstr("cannot be written"));
}

}  // namespace
}  // namespace krv::host
