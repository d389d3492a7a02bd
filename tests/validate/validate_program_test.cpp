// `krv validate` against plug-ins of which it is known what is wrong with them.
#include <gmock/gmock.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "support/process.h"
#include "support/scratch_folder.h"

namespace krv::test {
namespace {

using ::testing::HasSubstr;

// What was found by the chosen tests.
struct Validated {
  int code = -1;
  std::string output;
  nlohmann::json report;

  const nlohmann::json& Result(const std::string& test) const {
    for (const auto& result : report["results"]) {
      if (result["name"] == test) return result;
    }
    throw std::runtime_error("the report lacks the test " + test);
  }
};

class Validate : public ::testing::Test {
 protected:
  Validated Run(const std::string& plugin, const std::string& options) {
    const std::string report = (folder_.path() / "report.json").string();
    const ProgramOutcome outcome =
        RunProgram(KRV_PROGRAM, "validate \"" KRV_PLUGINS "/" + plugin +
                                    ".krv\" --packages \"" KRV_PACKAGE "\" --report \"" + report +
                                    "\" " + options);
    Validated validated{outcome.code, outcome.output + outcome.error_output, {}};
    std::ifstream file(report);
    validated.report = nlohmann::json::parse(file, nullptr, false);
    return validated;
  }

  // Runs one test; it must end so, with a failure that says so.
  void ExpectFound(const std::string& plugin, const std::string& test, const std::string& outcome,
                   const std::string& failure) {
    const Validated validated = Run(plugin, "--time-limit 10 --test " + test);
    EXPECT_EQ(validated.code, 1) << test;
    ASSERT_TRUE(validated.report.is_object()) << validated.output;
    const nlohmann::json& result = validated.Result(test);
    EXPECT_EQ(result["outcome"], outcome) << result.dump(2);
    EXPECT_THAT(result["failures"].dump(), HasSubstr(failure)) << test;
    EXPECT_THAT(validated.output, HasSubstr(test));
  }

  ScratchFolder folder_;
};

TEST_F(Validate, SoundPluginPassesEverything) {
  const Validated validated = Run("sound_plugin", "--strictness 5");
  EXPECT_EQ(validated.code, 0) << validated.output;
  EXPECT_EQ(validated.report["failed"], 0);
  EXPECT_GE(validated.report["tests"], 50);
  EXPECT_GE(validated.report["checks"], 10000);
  EXPECT_GT(validated.Result("frames.first")["frame_ms_mean"], 0);
  EXPECT_TRUE(validated.report["findings"].empty());
}

TEST_F(Validate, ChangedGlStateIsFound) {
  ExpectFound("untidy_plugin", "frames.first", "failed", "GL_BLEND is on, was off");
}

TEST_F(Validate, GlErrorIsFoundThoughThePluginHasTakenIt) {
  ExpectFound("untidy_plugin", "frames.first", "failed", "expected no GL error in slot 4");
}

TEST_F(Validate, LostTexturesAreFound) {
  ExpectFound("untidy_plugin", "resources.frames", "failed", "expected no more GL textures");
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
// A sanitizer's own memory hides it.
TEST_F(Validate, LostMemoryIsFound) {
  ExpectFound("untidy_plugin", "resources.frames", "failed", "expected memory that does not grow");
}
#endif

TEST_F(Validate, ByteWrittenBehindARowIsFound) {
  ExpectFound("reckless_plugin", "frames.strides", "failed",
              "expected nothing written beside the rows of the output");
}

TEST_F(Validate, FailingFrameThatWritesIsFound) {
  ExpectFound("reckless_plugin", "order.frame_before_initialise", "failed",
              "expected an output untouched by a failing frame");
}

TEST_F(Validate, CrashIsFoundWithWhatLedToIt) {
  ExpectFound("reckless_plugin", "frames.without_buffer", "crashed",
              "during: a frame with an output without a buffer");
}

TEST_F(Validate, DivisionByARateOfNothingIsFound) {
  ExpectFound("reckless_plugin", "inputs.frame_rates", "crashed", "at a rate of 0/0");
}

TEST_F(Validate, OkForANullArgumentIsFound) {
  ExpectFound("rude_plugin", "creation.null_arguments", "failed",
              "expected 2 from CreateKRVEffect, came 0");
}

TEST_F(Validate, ChangedPointerOfARefusedCreationIsFound) {
  ExpectFound("rude_plugin", "creation.unknown_names", "failed", "expected the pointer left alone");
}

TEST_F(Validate, DeviceKindOfAnotherHostIsFound) {
  ExpectFound("rude_plugin", "creation.device_kinds", "failed",
              "kind 1 of a host without a GPU device");
}

TEST_F(Validate, HangIsFoundWithWhatLedToIt) {
  ExpectFound("rude_plugin", "inputs.frame_indices", "hung", "during: frame -1 of");
}

TEST_F(Validate, PictureThatDependsOnTheFramesBeforeIsFound) {
  ExpectFound("rude_plugin", "frames.any_order", "failed", "expected the same picture");
}

TEST_F(Validate, ExceptionIsFound) {
  ExpectFound("rude_plugin", "order.null_arguments", "failed",
              "expected no exception from slot 4, came one that says: no context");
}

TEST_F(Validate, OneFaultOfManyTestsIsOneFinding) {
  const Validated validated =
      Run("untidy_plugin", "--test frames.first --test frames.every_effect --test frames.strides");
  const nlohmann::json& finding = validated.report["findings"][0];
  EXPECT_EQ(finding["tests"], 3);
  EXPECT_THAT(finding["first"].get<std::string>(), ::testing::StartsWith("frames.first: "));
}

TEST_F(Validate, NothingElseIsTriedWithALibraryThatIsNoPlugin) {
  const ProgramOutcome outcome = RunProgram(
      KRV_PROGRAM, "validate \"" KRV_PACKAGE "/description.json\" --packages \"" KRV_PACKAGE "\"");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.output, HasSubstr("cannot be loaded"));
  EXPECT_THAT(outcome.output, HasSubstr("\n1 tests"));
}

TEST_F(Validate, BadUsageIsOneLineAndCode2) {
  for (const char* const arguments :
       {"validate", "validate none.krv",
        "validate \"" KRV_PLUGINS "/sound_plugin.krv\" --test frame",
        "validate \"" KRV_PLUGINS "/sound_plugin.krv\" --strictness 11",
        "validate \"" KRV_PLUGINS "/sound_plugin.krv\" --packages none"}) {
    const ProgramOutcome outcome = RunProgram(KRV_PROGRAM, arguments);
    EXPECT_EQ(outcome.code, 2) << arguments;
    EXPECT_EQ(outcome.output, "") << arguments;
    EXPECT_EQ(std::count(outcome.error_output.begin(), outcome.error_output.end(), '\n'), 1)
        << outcome.error_output;
  }
}

TEST_F(Validate, ListShowsEachTestWithItsStrictnessAndItsDemand) {
  const ProgramOutcome outcome = RunProgram(KRV_PROGRAM, "validate --list");
  EXPECT_EQ(outcome.code, 0);
  EXPECT_THAT(outcome.output, HasSubstr(" 8  frames.large "));
  EXPECT_THAT(outcome.output, HasSubstr("Frames may be as large as 8192 x 8192."));
}

}  // namespace
}  // namespace krv::test
