// Packages that krv makes, checked and rendered as their authors would.
#pragma once

#include <gmock/gmock.h>

#include <string>

#include "host/render_program.h"
#include "utf8_path.h"

namespace krv::host {

class PackagingTest : public RenderProgramTest {
 protected:
  void SetUp() override {
    RenderProgramTest::SetUp();
    media_.Make("clip.mkv",
                "-f lavfi -i color=0x203040:s=160x90:r=25:d=0.2 "
                "-f lavfi -i anoisesrc=c=pink:seed=1:a=0.5:r=48000:d=0.2 "
                "-c:v ffv1 -c:a pcm_s16le ");
  }

  // The path of NAME in the test's folder, as an argument.
  std::string Argument(const std::string& name) const { return "\"" + Utf8(Path(name)) + "\""; }

  static test::ProgramOutcome Run(const std::string& line) {
    return test::RunProgram(KRV_PROGRAM, line);
  }

  static void RunWell(const std::string& line) {
    const test::ProgramOutcome outcome = Run(line);
    ASSERT_EQ(outcome.code, 0) << line << "\n" << outcome.output << outcome.error_output;
  }

  // Expects that it ends with code 2 and a complaint that says `reason`.
  static void ExpectRefused(const std::string& line, const std::string& reason) {
    const test::ProgramOutcome outcome = Run(line);
    EXPECT_EQ(outcome.code, 2) << line;
    EXPECT_THAT(outcome.error_output, ::testing::HasSubstr(reason)) << line;
  }

  // The clip's fourth frame with that effect of the packages in a folder.
  Picture RenderFrame(const std::filesystem::path& packages, const std::string& effect,
                      const std::string& output) {
    RenderWell("@clip.mkv --frames 3:4 -o @" + output + "/ --packages \"" + Utf8(packages) +
               "\" --effect " + effect);
    auto pictures = ReadPictures(output);
    EXPECT_EQ(pictures.size(), 1u);
    return pictures.empty() ? Picture() : std::move(pictures.begin()->second);
  }
};

}  // namespace krv::host
