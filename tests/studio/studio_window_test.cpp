// The studio's window, operated as a user does.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <vector>

#include "folder_tree.h"
#include "host/host_test_files.h"
#include "host/media_maker.h"
#include "media/media_error.h"
#include "studio/gradient.h"
#include "studio/studio_in_its_window.h"
#include "support/process.h"

namespace krv::studio {
namespace {

TEST_F(StudioInItsWindow, PlaysAndPauses) {
  Open(MakeDemoClip(), true);
  const int64_t first = studio().frame().index;
  const auto before = Bytes(studio().frame().picture);
  EXPECT_TRUE(hand_->Until([&] { return studio().frame().index > first + 5; }));
  EXPECT_NE(Bytes(studio().frame().picture), before);
  hand_->Key(SDLK_SPACE);
  EXPECT_FALSE(studio().playing());
  hand_->Click("play");
  EXPECT_TRUE(studio().playing());
  hand_->Click("picture");
  EXPECT_FALSE(studio().playing());
  hand_->Turns(20);
  const uint64_t pictures = studio().frame_count();
  hand_->Turns(20);
  EXPECT_EQ(studio().frame_count(), pictures);
}

TEST_F(StudioInItsWindow, TheMetersShowWhatTheShadersGet) {
  Open(MakeDemoClip(), false);
  studio().Seek(6);  // in the middle of the music
  EXPECT_TRUE(hand_->Until([&] { return studio().frame().index == 180; }));
  const SoundReading& sound = studio().frame().sound;
  EXPECT_GT(sound.level, 55);
  EXPECT_LT(sound.level, 120);
  EXPECT_GT(sound.spectrum[2], 0.5f);
  EXPECT_GT(sound.spectrum[2], sound.spectrum[200] + 0.1f);
}

TEST_F(StudioInItsWindow, ASliderChangesTheValueAndThePicture) {
  Open(MakeDemoClip(), false);
  const auto before = Bytes(studio().frame().picture);
  const auto& height = *studio().sheet().effect().Find("spectrum_minimum_height");
  hand_->Drag(hand_->At("param/spectrum_minimum_height", 0.1),
              hand_->At("param/spectrum_minimum_height", 0.5));
  EXPECT_NEAR(std::get<float>(studio().sheet().Value(height)), 50, 2);
  EXPECT_TRUE(hand_->Until([&] { return Bytes(studio().frame().picture) != before; }));
  hand_->Click("reset/spectrum_minimum_height");
  EXPECT_TRUE(studio().sheet().changed().empty());
  EXPECT_TRUE(hand_->Until([&] { return Bytes(studio().frame().picture) == before; }));
}

TEST_F(StudioInItsWindow, EveryKindOfParameterHasItsControl) {
  Open(MakeDemoClip(), false);
  const auto value = [this](const char* name) {
    return studio().sheet().Value(*studio().sheet().effect().Find(name));
  };
  hand_->Click("param/direction/1");  // few choices
  EXPECT_EQ(value("direction"), host::HostValue(int32_t{1}));
  hand_->Fill("param/spectrum_count/value", "100");
  EXPECT_EQ(value("spectrum_count"), host::HostValue(int32_t{100}));
  hand_->Key(SDLK_RETURN);
  hand_->Click("param/flip_x");
  EXPECT_EQ(value("flip_x"), host::HostValue(true));
  hand_->Click("group/Figure");  // folded, it makes room
  hand_->Click("group/Placement");
  hand_->Fill("param/color/hex", "#204060");
  EXPECT_EQ(value("color"), host::HostValue(int32_t{0x204060}));
  hand_->Key(SDLK_RETURN);
  hand_->Click("param/color");
  hand_->Click(hand_->At("param/color/picker", 0.1, 0.1));
  EXPECT_NE(value("color"), host::HostValue(int32_t{0x204060}));
}

TEST_F(StudioInItsWindow, StopsOfAGradientAreAddedMovedRecolouredAndRemoved) {
  Open(MakeDemoClip(), false);
  hand_->Click("group/Figure");
  hand_->Click("group/Placement");
  const auto gradient = [this] {
    const auto& parameter = *studio().sheet().effect().Find("gradient_color");
    return *Gradient::Parse(std::get<std::string>(studio().sheet().Value(parameter)));
  };
  const std::string id = "param/gradient_color";
  const size_t before = gradient().stops().size();
  hand_->Click(hand_->At(id + "/strip", 0.25));
  ASSERT_EQ(gradient().stops().size(), before + 1);
  EXPECT_NEAR(gradient().stops()[1].position, 25, 1);
  hand_->Drag(hand_->At(id + "/stop/1"), hand_->At(id + "/strip", 0.35, 1.3));
  EXPECT_NEAR(gradient().stops()[1].position, 35, 1);
  const uint32_t colour = gradient().stops()[1].colour;
  hand_->Click(id + "/colour");
  hand_->Click(hand_->At(id + "/colour/picker", 0.3, 0.1));
  EXPECT_NE(gradient().stops()[1].colour, colour);
  hand_->Key(SDLK_ESCAPE);
  hand_->Click({20, 120});  // beside the picker
  studio().Pause();
  hand_->Click(hand_->At(id + "/stop/1"), SDL_BUTTON_RIGHT);
  EXPECT_EQ(gradient().stops().size(), before);
  hand_->Click(id + "/remove");
  EXPECT_EQ(gradient().stops().size(), before - 1);
}

TEST_F(StudioInItsWindow, OfAGradientTypedAsATextOnlyOneIsTaken) {
  WritePackage("bars", "fx.own", "#version 120\nvoid main() { gl_FragColor = vec4(1.0); }\n",
               R"("original": true, "params": [
                  {"name": "gradient_color", "type": 8, "default_value": "1,255,0"}])");
  Open(MakeDemoClip(), false);
  const auto& parameter = *studio().sheet().effect().Find("gradient_color");
  hand_->Fill("param/gradient_color", "hello");
  hand_->Key(SDLK_RETURN);
  EXPECT_EQ(studio().Value(parameter), host::HostValue(std::string("1,255,0")));
  hand_->Fill("param/gradient_color", "1,65280,50");
  hand_->Key(SDLK_RETURN);
  EXPECT_EQ(studio().Value(parameter), host::HostValue(std::string("1,65280,50")));
}

TEST_F(StudioInItsWindow, TheTimelineAndTheArrowsScrub) {
  Open(MakeDemoClip(), false);
  hand_->Click(hand_->At("timeline", 0.25));
  EXPECT_NEAR(studio().position(), 3, 0.05);
  EXPECT_TRUE(hand_->Until([&] { return std::abs(studio().frame().index - 90) < 3; }));
  hand_->Drag(hand_->At("timeline", 0.25), hand_->At("timeline", 0.75));
  EXPECT_NEAR(studio().position(), 9, 0.05);
  hand_->Key(SDLK_HOME);
  EXPECT_EQ(studio().position(), 0);
  hand_->Key(SDLK_RIGHT);
  hand_->Key(SDLK_RIGHT);
  EXPECT_TRUE(hand_->Until([&] { return studio().frame().index == 2; }));
  hand_->Key(SDLK_LEFT);
  EXPECT_TRUE(hand_->Until([&] { return studio().frame().index == 1; }));
  hand_->Key(SDLK_RIGHT, KMOD_SHIFT);
  EXPECT_TRUE(hand_->Until([&] { return studio().frame().index == 31; }));
  hand_->Key(SDLK_END);
  EXPECT_TRUE(hand_->Until([&] { return studio().frame().index == 359; }));
}

TEST_F(StudioInItsWindow, ALoopGoesOnAndWithoutOneTheEndIsAnEnd) {
  Open(MakeDemoClip(), false);
  ASSERT_TRUE(studio().loop());
  studio().Seek(studio().length() - 0.2);
  hand_->Key(SDLK_SPACE);
  EXPECT_TRUE(hand_->Until([&] { return studio().position() < 5; }));
  EXPECT_TRUE(studio().playing());
  hand_->Key(SDLK_l);
  EXPECT_FALSE(studio().loop());
  studio().Seek(studio().length() - 0.2);
  EXPECT_TRUE(hand_->Until([&] { return !studio().playing(); }));
  EXPECT_EQ(studio().position(), studio().length());
  hand_->Key(SDLK_SPACE);
  EXPECT_TRUE(studio().playing());
  EXPECT_LT(studio().position(), 5);
  hand_->Click("loop");
  EXPECT_TRUE(studio().loop());
}

TEST_F(StudioInItsWindow, MuteIsAKeyAndAButton) {
  Open(MakeDemoClip(), true);
  EXPECT_FALSE(studio().muted());
  hand_->Key(SDLK_m);
  EXPECT_TRUE(studio().muted());
  const double before = studio().position();
  EXPECT_TRUE(hand_->Until([&] { return studio().position() > before + 0.3; }));
  hand_->Click("mute");
  EXPECT_FALSE(studio().muted());
}

TEST_F(StudioInItsWindow, SizeAndQualityOfThePictureAreChosen) {
  Open(MakeDemoClip(), false);
  hand_->Click("size/3");
  EXPECT_TRUE(hand_->Until([&] { return studio().frame().picture.width() == 320; }));
  hand_->Click("size/1");
  EXPECT_TRUE(hand_->Until([&] { return studio().frame().picture.width() == 1280; }));
  const auto before = Bytes(studio().frame().picture);
  hand_->Click("quality/1");
  EXPECT_EQ(studio().quality(), "low");
  EXPECT_TRUE(hand_->Until([&] { return Bytes(studio().frame().picture) != before; }));
  hand_->Click("quality/0");
  EXPECT_TRUE(hand_->Until([&] { return Bytes(studio().frame().picture) == before; }));
}

TEST_F(StudioInItsWindow, TheThemesAreDarkAndLight) {
  Open(MakeDemoClip(), false);
  EXPECT_LT(Brightness(hand_->Screenshot("dark")), 110);  // a fourth of the bytes is alpha
  hand_->Key(SDLK_t);
  EXPECT_GT(Brightness(hand_->Screenshot("light")), 150);
  hand_->Click("theme");
  EXPECT_LT(Brightness(hand_->Screenshot("dark_again")), 110);
}

// A shader of one colour.
std::string Shader(const char* colour) {
  return std::string("#version 120\nvoid main() {\n  gl_FragColor = vec4(") + colour + ");\n}\n";
}

constexpr char kRed[] = "1.0, 0.0, 0.0, 1.0";
constexpr char kGreen[] = "0.0, 1.0, 0.0, 1.0";

class StudioWithAnOwnShader : public StudioInItsWindow {
 protected:
  void SetUp() override {
    StudioInItsWindow::SetUp();
    package_ = Path("own");
    Save(kRed);
  }

  void Save(const char* colour) {
    WritePackage("own", "fx.own", Shader(colour), R"("original": true, "params": [])");
  }

  // The colour in the middle of the picture, 0xRRGGBB.
  unsigned Colour() {
    const host::Picture& picture = studio().frame().picture;
    const uint8_t* pixel = picture.Pixel(picture.width() / 2, picture.height() / 2);
    return unsigned{pixel[2]} << 16 | unsigned{pixel[1]} << 8 | pixel[0];
  }
};

TEST_F(StudioWithAnOwnShader, ASavedShaderIsShown) {
  Open(MakeDemoClip(), false);
  EXPECT_EQ(Colour(), 0xFF0000u);
  Save(kGreen);
  EXPECT_TRUE(hand_->Until([&] { return Colour() == 0x00FF00; }));
}

TEST_F(StudioWithAnOwnShader, AnErrorIsShownByFileAndLineAndTheLastPictureStays) {
  Open(MakeDemoClip(), true);
  Save("1.0, 0.0,\n  nope, 1.0");
  ASSERT_TRUE(hand_->Until([&] { return !studio().package().findings.empty(); }));
  const tool::Finding& finding = studio().package().findings.front();
  EXPECT_EQ(finding.severity, tool::Severity::kError);
  EXPECT_THAT(finding.file, ::testing::EndsWith("own/a.frag"));
  EXPECT_EQ(finding.line, 4);
  EXPECT_THAT(finding.message, ::testing::HasSubstr("nope"));
  hand_->Turns(2);
  EXPECT_TRUE(window_->marks().Find("problem/0"));
  // It plays on with the version before.
  const uint64_t pictures = studio().frame_count();
  EXPECT_TRUE(hand_->Until([&] { return studio().frame_count() > pictures + 5; }));
  EXPECT_EQ(Colour(), 0xFF0000u);
  Save(kGreen);
  EXPECT_TRUE(hand_->Until([&] { return Colour() == 0x00FF00; }));
  EXPECT_TRUE(studio().package().findings.empty());
  hand_->Turns(2);
  EXPECT_FALSE(window_->marks().Find("problem/0"));
}

TEST_F(StudioWithAnOwnShader, AnErrorInTheDescriptionIsShownByItsLine) {
  Open(MakeDemoClip(), false);
  host::WriteFile(package_ / "description.json",
                  "{\n\"effect_type\": \"audio_visualization\",\n,\n}");
  ASSERT_TRUE(hand_->Until([&] { return !studio().package().findings.empty(); }));
  EXPECT_EQ(studio().package().findings.front().line, 3);
  EXPECT_EQ(Colour(), 0xFF0000u);
}

TEST_F(StudioWithAnOwnShader, APackageThatNeverWorkedShowsTheClipAndTheErrors) {
  Save("nope");
  Open(MakeDemoClip(), false);
  EXPECT_FALSE(studio().package().ready);
  EXPECT_FALSE(studio().package().findings.empty());
  EXPECT_NE(Colour(), 0u);
  Save(kRed);
  EXPECT_TRUE(hand_->Until([&] { return Colour() == 0xFF0000; }));
}

TEST_F(StudioInItsWindow, SavedDefaultsChangeNothingElseInTheDescription) {
  Open(MakeDemoClip(), false);
  const std::string before = host::ReadFile(package_ / "description.json");
  hand_->Click("param/direction/1");
  hand_->Key(SDLK_s, KMOD_CTRL);
  std::string wanted = before;
  const std::string from =
      "\"direction\", \"type\": 3, \"min_value\": 0, \"max_value\": 1, \"default_value\": 0";
  const size_t at = wanted.find(from);
  ASSERT_NE(at, std::string::npos);
  wanted[at + from.size() - 1] = '1';
  EXPECT_EQ(host::ReadFile(package_ / "description.json"), wanted);
  EXPECT_THAT(std::string(studio().notice()), ::testing::HasSubstr("Saved 1 default"));
  // The package is loaded with it, and nothing is left to save.
  EXPECT_TRUE(hand_->Until([&] { return studio().sheet().changed().empty(); }));
  EXPECT_EQ(studio().sheet().effect().Find("direction")->default_number, 1);
}

class StudioExport : public StudioOverAFile {};

TEST_F(StudioExport, GivesTheFramesOfARenderWithTheSameValues) {
  const auto file = MakeClip();
  Open(OpenFile(file), false);
  hand_->Click("param/direction/1");
  hand_->Drag(hand_->At("param/spectrum_minimum_height", 0.1),
              hand_->At("param/spectrum_minimum_height", 0.7));
  const auto& height = *studio().sheet().effect().Find("spectrum_minimum_height");
  const auto value = std::get<float>(studio().sheet().Value(height));
  EXPECT_GT(value, 10);
  hand_->Click("size/3");
  hand_->Click("quality/1");  // of the preview alone
  std::filesystem::create_directory(Path("studio"));
  Export(host::Utf8(Path("studio/")) + "%03d.png");
  ASSERT_TRUE(hand_->Until([&] { return !studio().export_state().Running(); }));
  ASSERT_TRUE(IsIn(ExportState::Phase::kDone)) << studio().export_state().message;
  EXPECT_EQ(studio().export_state().frames, 10);

  std::filesystem::create_directory(Path("render"));
  char number[32];
  std::snprintf(number, sizeof number, "%.1f", static_cast<double>(value));
  const auto outcome = test::RunProgram(
      KRV_PROGRAM, "render \"" + host::Utf8(file) + "\" --packages \"" + host::Utf8(package_) +
                       "\" --effect audio_visualization_bars --param direction=1" +
                       " --param spectrum_minimum_height=" + number + " -o \"" +
                       host::Utf8(Path("render/")) + "%03d.png\"");
  ASSERT_EQ(outcome.code, 0) << outcome.error_output;
  for (int frame = 0; frame < 10; ++frame) {
    const std::string name = "00" + std::to_string(frame) + ".png";
    const std::string bytes = host::ReadFile(Path("studio/" + name));
    EXPECT_FALSE(bytes.empty());
    EXPECT_TRUE(bytes == host::ReadFile(Path("render/" + name))) << name;
  }
}

TEST_F(StudioExport, ACancelledOneLeavesNothing) {
  Open(MakeDemoClip(), false);
  std::filesystem::create_directory(Path("out"));
  Export(host::Utf8(Path("out/")) + "film.mp4");
  EXPECT_TRUE(studio().export_state().Running());
  EXPECT_THAT(studio().export_state().output, ::testing::EndsWith("out/film.mp4"));
  hand_->Key(SDLK_ESCAPE);
  EXPECT_TRUE(hand_->Until([&] { return IsIn(ExportState::Phase::kCancelled); }));
  EXPECT_TRUE(std::filesystem::is_empty(Path("out")));
  hand_->Key(SDLK_ESCAPE);
  EXPECT_TRUE(IsIn(ExportState::Phase::kNone));
  // The preview goes on.
  hand_->Key(SDLK_HOME);
  hand_->Key(SDLK_RIGHT);
  EXPECT_TRUE(hand_->Until([&] { return studio().frame().index == 1; }));
}

TEST_F(StudioExport, AFileThatIsThereIsNotReplacedByAccident) {
  Open(OpenFile(MakeClip()), false);
  const auto file = Path("film.mkv");
  host::WriteFile(file, "mine");
  hand_->Key(SDLK_e, KMOD_CTRL);
  hand_->Fill("export/output", host::Utf8(file));
  hand_->Key(SDLK_RETURN);
  EXPECT_TRUE(IsIn(ExportState::Phase::kNone));
  EXPECT_EQ(host::ReadFile(file), "mine");
  hand_->Screenshot("export_replaces_dark");
  hand_->Key(SDLK_ESCAPE);
  hand_->Key(SDLK_t);
  hand_->Key(SDLK_e, KMOD_CTRL);
  hand_->Screenshot("export_replaces_light");
  hand_->Click("export/go");  // it says "Replace it" now
  ASSERT_TRUE(hand_->Until([&] { return IsIn(ExportState::Phase::kDone); }));
  EXPECT_NE(host::ReadFile(file), "mine");
}

TEST_F(StudioExport, AFileThatHasJustComeIsToldOfFirst) {
  Open(OpenFile(MakeClip()), false);
  const auto file = Path("film.mkv");
  hand_->Key(SDLK_e, KMOD_CTRL);
  hand_->Fill("export/output", host::Utf8(file));
  const auto place = hand_->At("export/go");
  hand_->Hold(place);
  host::WriteFile(file, "mine");
  hand_->Release(place);
  EXPECT_TRUE(IsIn(ExportState::Phase::kNone));
  EXPECT_EQ(host::ReadFile(file), "mine");
}

TEST_F(StudioExport, PicturesThatAreThereAreNotReplacedByAccident) {
  Open(OpenFile(MakeClip()), false);
  const auto picture = Path("frames/frame_000009.png");
  host::WriteFile(picture, "mine");
  hand_->Key(SDLK_e, KMOD_CTRL);
  hand_->Fill("export/output", host::Utf8(Path("frames/")));
  hand_->Key(SDLK_RETURN);
  EXPECT_TRUE(IsIn(ExportState::Phase::kNone));
  EXPECT_EQ(host::ReadFile(picture), "mine");
  hand_->Screenshot("export_replaces_pictures");
  hand_->Click("export/go");  // it says "Replace them" now
  ASSERT_TRUE(hand_->Until([&] { return IsIn(ExportState::Phase::kDone); }));
  EXPECT_NE(host::ReadFile(picture), "mine");
}

TEST_F(StudioExport, ClosingAsksWhileOneIsUnderWay) {
  Open(MakeDemoClip(), false);
  std::filesystem::create_directory(Path("out"));
  Export(host::Utf8(Path("out/")) + "film.mp4");
  hand_->Key(SDLK_q, KMOD_CTRL);
  EXPECT_TRUE(window_->Turn());
  hand_->Screenshot("export_closing_dark");
  hand_->Key(SDLK_ESCAPE);  // takes the question back, not the export
  hand_->Turns(2);
  EXPECT_FALSE(window_->marks().Find("export/leave"));
  hand_->Key(SDLK_q, KMOD_CTRL);
  hand_->Click("export/stay");
  EXPECT_TRUE(window_->Turn());
  EXPECT_FALSE(window_->marks().Find("export/leave"));
  ASSERT_TRUE(studio().export_state().Running());
  hand_->Key(SDLK_q, KMOD_CTRL);
  hand_->Click("export/leave");
  EXPECT_FALSE(window_->Turn());
  window_.reset();
  EXPECT_TRUE(std::filesystem::is_empty(Path("out")));
}

TEST_F(StudioExport, ClosingAsksAboutTheKeyframesAsWell) {
  Open(MakeDemoClip(), false);
  hand_->Click("key/spectrum_minimum_height");
  std::filesystem::create_directory(Path("out"));
  Export(host::Utf8(Path("out/")) + "film.mp4");
  hand_->Key(SDLK_q, KMOD_CTRL);
  hand_->Click("export/leave");
  EXPECT_TRUE(window_->Turn());
  EXPECT_FALSE(window_->marks().Find("export/cancel"));
  hand_->Key(SDLK_ESCAPE);  // nothing has been given up yet
  EXPECT_TRUE(window_->Turn());
  EXPECT_TRUE(window_->marks().Find("export/cancel"));
  ASSERT_TRUE(studio().export_state().Running());
  hand_->Key(SDLK_q, KMOD_CTRL);
  hand_->Click("export/leave");
  hand_->Click("keyframes/discard");
  EXPECT_FALSE(window_->Turn());
}

TEST_F(StudioExport, SaysWhyItCannot) {
  Open(MakeDemoClip(), false);
  Export("film.xyz");
  EXPECT_TRUE(hand_->Until([&] { return IsIn(ExportState::Phase::kFailed); }));
  EXPECT_THAT(studio().export_state().message, ::testing::HasSubstr("film.xyz"));
}

TEST(StudioCommand, WithoutADisplayItSaysSo) {
  const auto outcome = test::RunProgram(
      KRV_PROGRAM, "studio \"" KRV_PACKAGES "/bars\" --packages \"" KRV_PACKAGES "\"",
      {{"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}});
  EXPECT_EQ(outcome.code, 2);
  EXPECT_THAT(outcome.error_output, ::testing::HasSubstr("krv: there is no display for a window"));
}

TEST(StudioCommand, WithoutAPackageItTakesAnEffectThatIsShipped) {
  const test::Environment no_display = {{"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}};
  const auto found =
      test::RunProgram(KRV_PROGRAM, "studio --packages \"" KRV_PACKAGES "\"", no_display);
  EXPECT_THAT(found.error_output, ::testing::HasSubstr("krv: there is no display for a window"));
  const auto lacking =
      test::RunProgram(KRV_PROGRAM, "studio --packages \"" KRV_PACKAGES "/lines\"", no_display);
  EXPECT_THAT(lacking.error_output, ::testing::HasSubstr("audio_visualization_bars: there is no"));
}

TEST_F(StudioInItsWindow, PicturesOfTheGuide) {
  Open(MakeDemoClip(), false);
  hand_->Drag(hand_->At("param/scale_y", 0.2), hand_->At("param/scale_y", 0.29));
  hand_->Click("group/Figure");
  studio().Seek(4);
  hand_->Key(SDLK_SPACE);
  EXPECT_TRUE(hand_->Until([&] { return studio().position() > 7; }));  // for the times of frames
  hand_->Key(SDLK_SPACE);
  studio().Seek(8.101);
  EXPECT_TRUE(hand_->Until([&] { return studio().frame().index == 243; }));
  hand_->Turns(5);
  hand_->Screenshot("studio_dark");
  hand_->Key(SDLK_t);
  hand_->Screenshot("studio_light");
  hand_->Key(SDLK_t);
  hand_->Key(SDLK_e, KMOD_CTRL);
  hand_->Screenshot("studio_export");
}

TEST_F(StudioInItsWindow, PicturesOfAnError) {
  std::filesystem::remove_all(package_);
  std::filesystem::create_directory(package_);
  host::CopyTree(host::PathFromUtf8(KRV_PACKAGES) / "star_3d", package_);
  Open(MakeDemoClip(), false);
  studio().Seek(6.03);
  EXPECT_TRUE(hand_->Until([&] { return studio().frame().index == 180; }));
  std::string shader = host::ReadFile(package_ / "star.frag");
  const size_t at = shader.find("void main()");
  ASSERT_NE(at, std::string::npos);
  shader.insert(shader.find('\n', at) + 1, "  float shimmer = 0.5 * glitter;\n");
  host::WriteFile(package_ / "star.frag", shader);
  ASSERT_TRUE(hand_->Until([&] { return !studio().package().findings.empty(); }));
  hand_->Screenshot("error_dark");
  hand_->Key(SDLK_t);
  const host::Picture light = hand_->Screenshot("error_light");
  EXPECT_GT(Brightness(light), 150);
}

}  // namespace
}  // namespace krv::studio
