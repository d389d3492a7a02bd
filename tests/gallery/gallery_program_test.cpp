// The built program's `krv gallery`, run as a user runs it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <thread>

#include "host/host_test_files.h"
#include "host/media_maker.h"
#include "media/still_source.h"
#include "platform/file_system.h"
#include "support/process.h"

namespace krv::host {
namespace {

using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr char kWhite[] = "#version 120\nvoid main() {\n  gl_FragColor = vec4(1.0);\n}\n";
constexpr char kBroken[] = "#version 120\nvoid main() {\n  gl_FragColor = vec4(nope);\n}\n";

size_t Count(const std::string& text, const std::string& part) {
  size_t count = 0;
  for (size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) ++count;
  return count;
}

class GalleryProgram : public FilesTest {
 protected:
  // Runs `krv gallery` over a clip of 64 x 48 pixels and 0.3 s, into the folder "out".
  test::ProgramOutcome Gallery(const std::string& further = "") {
    const auto clip =
        media_.Make("clip.mkv", NumberedFrames("30", 0.3) + RampSamples(48000, "stereo", 0.3) +
                                    "-c:v libx264 -qp 0 -c:a pcm_s16le");
    return test::RunProgram(KRV_PROGRAM, "gallery \"" + Utf8(clip) + "\" --packages \"" +
                                             Utf8(Path("packages")) + "\" -o \"" +
                                             Utf8(Path("out")) + "\" " + further);
  }

  // Starts `krv gallery` without a clip, to be interrupted, and waits until it has made its folder.
  std::unique_ptr<test::Process> StartAndAwaitFolder() {
    auto program = std::make_unique<test::Process>(
        KRV_PROGRAM,
        "gallery --packages \"" + Utf8(Path("packages")) + "\" -o \"" + Utf8(Path("out")) + "\"",
        test::Interruptible::kYes);
    for (int i = 0; i < 6000 && !platform::IsFolder(Path("out")); ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return program;
  }

  std::string Page() const { return ReadFile(Path("out/index.html")); }

  MediaMaker media_;
};

TEST_F(GalleryProgram, EveryPackageIsACardByNameAndAPictureOfTheSheet) {
  WritePackage("packages/b", "fx.b", kWhite);
  WritePackage("packages/a", "fx.a", kWhite, R"("params": [
      {"name": "gain", "type": 5, "min_value": 0, "max_value": 2, "default_value": 0.1}])");
  const test::ProgramOutcome outcome = Gallery();
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.output, "");
  EXPECT_THAT(outcome.error_output,
              AllOf(StartsWith("krv: 2 effects in "), EndsWith("index.html\n")));
  const std::string page = Page();
  EXPECT_EQ(Count(page, "<article"), 2u);
  EXPECT_EQ(Count(page, "src=\"data:image/jpeg;base64,"), 2u);
  EXPECT_EQ(Count(page, "src=\"data:video/webm;base64,"), 2u);
  EXPECT_LT(page.find("<code>fx.a</code>"), page.find("<code>fx.b</code>"));
  EXPECT_EQ(Count(page, ">gain</th><td>float</td><td>0 to 2</td><td>0.1</td>"), 1u);
  const Picture sheet = LoadPicture(Path("out/contact_sheet.png"), {});
  // Both stills are white: the effect lays a white figure over everything.
  for (const int x : {sheet.width() / 4, sheet.width() * 3 / 4}) {
    EXPECT_EQ(sheet.Pixel(x, sheet.height() * 2 / 5)[1], 255) << x;
  }
}

TEST_F(GalleryProgram, EffectsThatFollowAPersonHaveOne) {
  WritePackage("packages/a", "fx.a", kWhite, R"("input_list": ["human_segment"], "params": [])");
  const test::ProgramOutcome outcome = Gallery();
  EXPECT_EQ(outcome.code, 0) << outcome.error_output;
  EXPECT_EQ(Count(Page(), "<article"), 1u);
}

TEST_F(GalleryProgram, ABrokenPackageIsReportedAndTheOthersGoIn) {
  WritePackage("packages/a", "fx.a", kWhite);
  WritePackage("packages/b", "fx.b", kBroken);
  WriteFile(Path("packages/c/description.json"), "{");
  const test::ProgramOutcome outcome = Gallery();
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(Count(outcome.error_output, "\n"), 3u) << outcome.error_output;
  EXPECT_THAT(outcome.error_output, HasSubstr(Utf8(Path("packages/b/a.frag")) + ":3: error: "));
  EXPECT_THAT(outcome.error_output, HasSubstr(Utf8(Path("packages/c"))));
  EXPECT_THAT(outcome.error_output, HasSubstr("krv: 1 effect in "));
  EXPECT_EQ(Count(Page(), "<article"), 1u);
  EXPECT_THAT(Page(), Not(HasSubstr("fx.b")));
}

TEST_F(GalleryProgram, WithoutOneWholePackageTheOlderGalleryStays) {
  WritePackage("packages/a", "fx.a", kBroken);
  WriteFile(Path("out/index.html"), "old");
  const test::ProgramOutcome outcome = Gallery();
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(Count(outcome.error_output, "\n"), 1u) << outcome.error_output;
  EXPECT_EQ(Page(), "old");
}

TEST_F(GalleryProgram, WithoutOneWholePackageAnOlderEmptyFolderStaysAndANewOneDoesNot) {
  WritePackage("packages/a", "fx.a", kBroken);
  EXPECT_EQ(Gallery().code, 1);
  EXPECT_FALSE(platform::IsFolder(Path("out")));
  std::filesystem::create_directory(Path("out"));
  EXPECT_EQ(Gallery().code, 1);
  EXPECT_TRUE(platform::IsFolder(Path("out")));
}

TEST_F(GalleryProgram, ASecondRunTakesTheFirstOnesPlace) {
  WritePackage("packages/a", "fx.a", kWhite);
  WriteFile(Path("out/index.html"), "old");
  EXPECT_EQ(Gallery().code, 0);
  EXPECT_EQ(Count(Page(), "<article"), 1u);
  size_t files = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(Path("out"))) {
    ++files;
  }
  EXPECT_EQ(files, 2u) << "the page and the sheet";
}

TEST_F(GalleryProgram, AnInterruptLeavesTheOlderGallery) {
  for (const char* name : {"a", "b", "c", "d", "e", "f"}) {
    WritePackage(std::string("packages/") + name, std::string("fx.") + name, kWhite);
  }
  const auto program = StartAndAwaitFolder();
  WriteFile(Path("out/index.html"), "old");
  program->Interrupt();
  const test::ProgramOutcome outcome = program->Wait();
  EXPECT_EQ(outcome.code, 130) << outcome.error_output;
  EXPECT_EQ(outcome.error_output, "krv: interrupted; no gallery is written\n");
  EXPECT_EQ(Page(), "old");
}

TEST_F(GalleryProgram, AnInterruptLeavesNoFolderOfItsOwn) {
  WritePackage("packages/a", "fx.a", kWhite);
  const auto program = StartAndAwaitFolder();
  program->Interrupt();
  EXPECT_EQ(program->Wait().code, 130);
  EXPECT_FALSE(platform::IsFolder(Path("out")));
}

TEST_F(GalleryProgram, BadUsageIsOneLineAndCode2) {
  WritePackage("packages/a", "fx.a", kWhite);
  const auto expect = [this](const std::string& further, const std::string& reason) {
    const test::ProgramOutcome outcome = Gallery(further);
    EXPECT_EQ(outcome.code, 2) << further;
    EXPECT_EQ(Count(outcome.error_output, "\n"), 1u) << outcome.error_output;
    EXPECT_THAT(outcome.error_output, HasSubstr(reason));
  };
  expect("none.mp4", "none.mp4");
  expect("\"" + Utf8(Path("packages/a/a.frag")) + "\"", "a.frag");
  expect("--packages \"" + Utf8(Path("none")) + "\"", "there is no such folder");
  expect("--plugin none.krv", "none.krv: there is no such file");
  expect("--colour", "--colour");
}

TEST_F(GalleryProgram, AFolderThatCannotBeMadeIsNamedBeforeAnythingIsRendered) {
  WritePackage("packages/a", "fx.a", kWhite);
  WriteFile(Path("file"), "");
  for (const char* folder : {"file", "none/out"}) {
    const test::ProgramOutcome outcome =
        test::RunProgram(KRV_PROGRAM, "gallery --packages \"" + Utf8(Path("packages")) +
                                          "\" -o \"" + Utf8(Path(folder)) + "\"");
    EXPECT_EQ(outcome.code, 2) << folder;
    EXPECT_THAT(outcome.error_output, HasSubstr(Utf8(Path(folder)))) << folder;
  }
}

}  // namespace
}  // namespace krv::host
