// Keyframes in the studio's window, made as a user does.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <SDL.h>

#include <string>
#include <vector>

#include "studio/studio_in_its_window.h"
#include "support/process.h"

namespace krv::studio {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

constexpr char kHeight[] = "spectrum_minimum_height";

class StudioKeyframes : public StudioOverAFile {
 protected:
  float Value(const char* name = kHeight) {
    return std::get<float>(studio().Value(*studio().sheet().effect().Find(name)));
  }

  // Moves the slider to a share of its width.
  void Slide(double share) {
    const double now = static_cast<double>(Value()) / 100;
    const std::string id = std::string("param/") + kHeight;
    hand_->Drag(hand_->At(id, now), hand_->At(id, share));
  }

  std::vector<int64_t> Frames(const char* name = kHeight) { return studio().keys().Frames(name); }

  void Press(int times, SDL_Keycode key, Uint16 modifiers = KMOD_NONE) {
    for (int i = 0; i < times; ++i) hand_->Key(key, modifiers);
  }

  // Two keys by hand over the clip of a file: a low one at frame 0, a high one at frame 8.
  void SetTwoKeys() {
    hand_->Click(std::string("key/") + kHeight);
    Slide(0.2);
    Press(8, SDLK_RIGHT);
    Slide(0.8);
  }

  // The bare frames of a render of the clip.
  std::string Render(const std::filesystem::path& clip, const std::string& options) {
    const auto outcome = test::RunProgram(
        KRV_PROGRAM, "render \"" + host::Utf8(clip) + "\" --packages \"" + host::Utf8(package_) +
                         "\" --effect audio_visualization_bars " + options + " -o \"" +
                         host::Utf8(Path("frames.raw")) + "\"");
    EXPECT_EQ(outcome.code, 0) << outcome.error_output;
    return host::ReadFile(Path("frames.raw"));
  }

  std::string Params(const std::filesystem::path& file) {
    return "--params \"" + host::Utf8(file) + "\"";
  }
};

// One of the frames in the bytes of all.
std::vector<uint8_t> FrameOf(const std::string& frames, int64_t index, size_t size) {
  const auto begin = frames.begin() + static_cast<ptrdiff_t>(static_cast<size_t>(index) * size);
  return {begin, begin + static_cast<ptrdiff_t>(size)};
}

TEST_F(StudioKeyframes, WhatIsSeenIsWhatARenderOfTheSavedFileShows) {
  const auto clip = MakeClip();
  Open(OpenFile(clip), false);
  hand_->Click("size/1");
  hand_->Click("param/direction/1");  // a value that does not change over time
  SetTwoKeys();
  EXPECT_THAT(Frames(), ElementsAre(0, 8));
  const float high = Value();
  Press(1, SDLK_LEFT, KMOD_CTRL);
  EXPECT_EQ(studio().frame_now(), 0);
  const float low = Value();
  EXPECT_NEAR(low, 20, 5);
  EXPECT_NEAR(high, 80, 5);
  Press(4, SDLK_RIGHT);
  EXPECT_FLOAT_EQ(Value(), (low + high) / 2);
  Press(2, SDLK_LEFT);
  EXPECT_FLOAT_EQ(Value(), low + (high - low) / 4);
  hand_->Click(hand_->At(std::string("key/") + kHeight), SDL_BUTTON_RIGHT);
  hand_->Click(std::string("key/") + kHeight + "/Smooth");
  EXPECT_FLOAT_EQ(Value(), low + (high - low) * 0.15625f);

  EXPECT_TRUE(studio().KeyframesUnsaved());
  const auto file = Path("moving.json");
  hand_->Key(SDLK_s, KMOD_CTRL | KMOD_SHIFT);
  hand_->Fill("keyframes/file", host::Utf8(file));
  hand_->Click("keyframes/save");
  EXPECT_FALSE(studio().KeyframesUnsaved());

  const std::string rendered = Render(clip, Params(file));
  const host::VideoFormat& video = studio().clip().video();
  const size_t size = size_t{4} * static_cast<size_t>(video.width * video.height);
  ASSERT_EQ(rendered.size(), 10 * size);
  EXPECT_NE(FrameOf(rendered, 2, size), FrameOf(Render(clip, "--param direction=1"), 2, size));
  for (const int64_t frame : {2, 0, 4, 5, 8, 9}) {
    studio().SeekFrame(frame);
    const auto expected = FrameOf(rendered, frame, size);
    EXPECT_TRUE(hand_->Until([&] {
      return studio().frame().index == frame && Bytes(studio().frame().picture) == expected;
    })) << frame;
  }

  Export(host::Utf8(Path("exported.raw")));
  ASSERT_TRUE(hand_->Until([&] { return !studio().export_state().Running(); }));
  EXPECT_TRUE(IsIn(ExportState::Phase::kDone)) << studio().export_state().message;
  EXPECT_TRUE(host::ReadFile(Path("exported.raw")) == rendered);
}

TEST_F(StudioKeyframes, TheDiamondSetsAndRemovesTheKeyOfTheFrame) {
  Open(OpenFile(MakeClip()), false);
  const std::string key = std::string("key/") + kHeight;
  hand_->Click(key);
  EXPECT_THAT(Frames(), ElementsAre(0));
  Slide(0.5);
  const float value = Value();
  Press(3, SDLK_RIGHT);
  hand_->Click(key);
  EXPECT_THAT(Frames(), ElementsAre(0, 3));
  EXPECT_EQ(Value(), value);
  hand_->Click(key);
  EXPECT_THAT(Frames(), ElementsAre(0));
  Press(1, SDLK_HOME);
  hand_->Click(key);
  EXPECT_TRUE(studio().keys().empty());
  EXPECT_EQ(Value(), value);  // now for the whole clip
  EXPECT_TRUE(studio().sheet().IsChanged(kHeight));
}

TEST_F(StudioKeyframes, AllKeysOfAParameterAreRemovedByTheMenu) {
  Open(OpenFile(MakeClip()), false);
  SetTwoKeys();
  const std::string key = std::string("key/") + kHeight;
  hand_->Click(hand_->At(key), SDL_BUTTON_RIGHT);
  hand_->Click(key + "/remove");
  EXPECT_TRUE(studio().keys().empty());
}

TEST_F(StudioKeyframes, AChangeWhileTheClipPlaysPausesIt) {
  Open(MakeDemoClip(), true);
  hand_->Click(std::string("key/") + kHeight);
  ASSERT_TRUE(studio().playing());
  hand_->Click(hand_->At(std::string("param/") + kHeight, 0.9));
  EXPECT_FALSE(studio().playing());
  EXPECT_TRUE(studio().keys().HasKeyAt(kHeight, studio().frame_now()));
}

TEST_F(StudioKeyframes, KeysOnTheTimelineAreGoneToAndMoved) {
  Open(OpenFile(MakeClip()), false);
  SetTwoKeys();
  hand_->Click("lane/0");
  EXPECT_EQ(studio().frame_now(), 0);
  hand_->Click("key_on");
  EXPECT_EQ(studio().frame_now(), 8);
  hand_->Click("key_back");
  EXPECT_EQ(studio().frame_now(), 0);
  const auto start = hand_->At("timeline", 0);
  const auto from = hand_->At("lane/8");
  const auto to = hand_->At("timeline", 0.6);
  hand_->Drag(from, {to.x, from.y});
  EXPECT_THAT(Frames(), ElementsAre(0, 6));
  EXPECT_EQ(studio().frame_now(), 6);
  EXPECT_NEAR(Value(), 80, 5);
  // Keys do not pass each other.
  hand_->Drag(hand_->At("lane/6"), {start.x, from.y});
  EXPECT_THAT(Frames(), ElementsAre(0, 1));
}

TEST_F(StudioKeyframes, OfAChosenParameterOnlyItsKeysAreMeant) {
  Open(OpenFile(MakeClip()), false);
  SetTwoKeys();  // at 0 and 8, where it is now
  hand_->Click("key/spectrum_count");
  Press(4, SDLK_LEFT);
  hand_->Click("key/spectrum_count");
  EXPECT_THAT(Frames("spectrum_count"), ElementsAre(4, 8));
  Press(1, SDLK_LEFT, KMOD_CTRL);
  EXPECT_EQ(studio().frame_now(), 0);
  hand_->Click("label/spectrum_count");
  EXPECT_EQ(studio().chosen(), "spectrum_count");
  Press(1, SDLK_RIGHT, KMOD_CTRL);
  EXPECT_EQ(studio().frame_now(), 4);
  const auto from = hand_->At("lane/8");
  hand_->Drag(from, {hand_->At("timeline", 0.6).x, from.y});
  EXPECT_THAT(Frames("spectrum_count"), ElementsAre(4, 6));
  EXPECT_THAT(Frames(), ElementsAre(0, 8));
  EXPECT_FALSE(window_->marks().Find("lane/8"));
  hand_->Click("label/spectrum_count");
  EXPECT_EQ(studio().chosen(), "");
  EXPECT_TRUE(window_->marks().Find("lane/8"));
}

TEST_F(StudioKeyframes, AFileIsLoadedAtTheStartAndSavedAgain) {
  const auto file = Path("params.json");
  host::WriteFile(file, R"({"$schema": "here.json", "spectrum_count": 40,
    "spectrum_minimum_height": [
      {"time": 0, "value": 10}, {"frame": 8, "value": 50, "to": "hold", "$comment": "up"}]})");
  Open(OpenFile(MakeClip()), false, file);
  EXPECT_THAT(Frames(), ElementsAre(0, 8));
  EXPECT_THAT(Frames("spectrum_count"), IsEmpty());
  EXPECT_TRUE(studio().sheet().IsChanged("spectrum_count"));
  EXPECT_FALSE(studio().KeyframesUnsaved());
  studio().SeekFrame(4);
  EXPECT_FLOAT_EQ(Value(), 30);
  hand_->Click(std::string("key/") + kHeight);
  EXPECT_TRUE(studio().KeyframesUnsaved());
  hand_->Click("save_keyframes");
  EXPECT_FALSE(studio().KeyframesUnsaved());
  const std::string saved = host::ReadFile(file);
  EXPECT_THAT(saved, HasSubstr("{\"frame\": 4, \"value\": 30}"));
  EXPECT_THAT(saved, StartsWith("{\n  \"$schema\": \"here.json\",\n"));
  EXPECT_THAT(saved, HasSubstr("\"to\": \"hold\", \"$comment\": \"up\"}"));
}

TEST_F(StudioKeyframes, AFileWithErrorsIsRefusedWithItsLine) {
  host::WriteFile(Path("params.json"), "{\n\"spectrum_count\": 40,\n\"spectrum_cuont\": 40\n}");
  const auto outcome = test::RunProgram(
      KRV_PROGRAM, "studio \"" + host::Utf8(package_) + "\" " + Params(Path("params.json")));
  EXPECT_EQ(outcome.code, 2);
  EXPECT_THAT(
      outcome.error_output,
      HasSubstr("params.json:3: error: /spectrum_cuont: effect \"audio_visualization_bars"));
  EXPECT_THAT(outcome.error_output, HasSubstr("did you mean \"spectrum_count\"?"));
  const auto missing = test::RunProgram(
      KRV_PROGRAM, "studio \"" + host::Utf8(package_) + "\" " + Params(Path("none.json")));
  EXPECT_EQ(missing.code, 2);
  EXPECT_THAT(missing.error_output, HasSubstr("none.json"));
}

TEST_F(StudioKeyframes, AFileStaysAsItIsUntilThePackageWorks) {
  const auto write = [this](const char* colour) {
    WritePackage("bars", "fx.own",
                 std::string("#version 120\nuniform float level;\nvoid main() { gl_FragColor = ") +
                     colour + "; }\n",
                 R"("original": true, "params": [{"name": "level", "type": 5, "min_value": 0,
                    "max_value": 1, "default_value": 0.3}])");
  };
  const auto file = Path("params.json");
  const std::string mine = R"({"level": [{"time": 0, "value": 0.5}, {"frame": 8, "value": 1}]})";
  host::WriteFile(file, mine);
  write("nope");
  Open(OpenFile(MakeClip()), false, file);
  ASSERT_FALSE(studio().package().ready);
  EXPECT_FALSE(studio().KeyframesUnsaved());
  hand_->Key(SDLK_s, KMOD_CTRL | KMOD_SHIFT);
  EXPECT_EQ(host::ReadFile(file), mine);
  EXPECT_FALSE(window_->marks().Find("keyframes/save"));
  EXPECT_FALSE(studio().SaveKeyframes(file));
  EXPECT_TRUE(studio().notice_is_error());
  EXPECT_THAT(std::string(studio().notice()), HasSubstr("params.json: not saved"));
  EXPECT_EQ(host::ReadFile(file), mine);
  write("vec4(level)");
  ASSERT_TRUE(hand_->Until([&] { return studio().package().ready; }));
  EXPECT_THAT(Frames("level"), ElementsAre(0, 8));
  EXPECT_FALSE(studio().KeyframesUnsaved());
  hand_->Click("key/level");
  hand_->Key(SDLK_s, KMOD_CTRL | KMOD_SHIFT);
  EXPECT_FALSE(studio().KeyframesUnsaved());
  EXPECT_THAT(host::ReadFile(file), HasSubstr("level"));
  EXPECT_NE(host::ReadFile(file), mine);
}

TEST_F(StudioKeyframes, WhereTheyCannotBeSavedAnotherFileIsAskedFor) {
  Open(OpenFile(MakeClip()), false);
  hand_->Click(std::string("key/") + kHeight);
  hand_->Key(SDLK_s, KMOD_CTRL | KMOD_SHIFT);
  hand_->Fill("keyframes/file", host::Utf8(Path("none/params.json")));
  hand_->Click("keyframes/save");
  EXPECT_TRUE(studio().notice_is_error());
  EXPECT_THAT(std::string(studio().notice()), HasSubstr("params.json: cannot be written"));
  EXPECT_TRUE(studio().KeyframesUnsaved());
  hand_->Screenshot("keyframes_refused");
  std::filesystem::create_directory(Path("good"));
  hand_->Fill("keyframes/file", host::Utf8(Path("good/params")));
  hand_->Click("keyframes/save");
  EXPECT_FALSE(studio().KeyframesUnsaved());
  EXPECT_FALSE(window_->marks().Find("keyframes/save"));
  EXPECT_THAT(host::ReadFile(Path("good/params.json")), HasSubstr(kHeight));
  // Now it has a name, and nothing is asked.
  Press(1, SDLK_RIGHT);
  hand_->Click(std::string("key/") + kHeight);
  hand_->Key(SDLK_s, KMOD_CTRL | KMOD_SHIFT);
  EXPECT_FALSE(window_->marks().Find("keyframes/save"));
  EXPECT_THAT(host::ReadFile(Path("good/params.json")), HasSubstr("\"frame\": 1"));
  std::filesystem::remove_all(Path("good"));
  hand_->Click(std::string("key/") + kHeight);
  hand_->Key(SDLK_s, KMOD_CTRL | KMOD_SHIFT);
  EXPECT_TRUE(window_->marks().Find("keyframes/save"));
}

TEST_F(StudioKeyframes, AFileThatIsThereIsNotReplacedByAccident) {
  Open(OpenFile(MakeClip()), false);
  hand_->Click(std::string("key/") + kHeight);
  const auto file = Path("there.json");
  host::WriteFile(file, "mine");
  hand_->Click("save_keyframes");
  hand_->Fill("keyframes/file", host::Utf8(file));
  hand_->Key(SDLK_RETURN);
  EXPECT_EQ(host::ReadFile(file), "mine");
  EXPECT_TRUE(studio().KeyframesUnsaved());
  hand_->Click("keyframes/save");  // it says "Replace it" now
  EXPECT_THAT(host::ReadFile(file), HasSubstr(kHeight));
}

TEST_F(StudioKeyframes, ClosingAsksWhereKeyframesWouldBeLost) {
  Open(OpenFile(MakeClip()), false);
  hand_->Click(std::string("key/") + kHeight);
  hand_->Key(SDLK_q, KMOD_CTRL);
  EXPECT_TRUE(window_->Turn());
  hand_->Click("keyframes/cancel");
  EXPECT_TRUE(window_->Turn());
  EXPECT_FALSE(window_->marks().Find("keyframes/cancel"));
  hand_->Key(SDLK_q, KMOD_CTRL);
  hand_->Click("keyframes/discard");
  EXPECT_FALSE(window_->Turn());
}

TEST_F(StudioKeyframes, KeysOfAParameterThatIsGoneGoWithAMessage) {
  const auto write = [this](const char* name, const char* kind) {
    WritePackage(
        "bars", "fx.own",
        "#version 120\nuniform float level;\nvoid main() { gl_FragColor = vec4(level); }\n",
        std::string(R"("original": true, "params": [
                   {"name": "level", "type": 5, "min_value": 0, "max_value": 1,
                    "default_value": 0.3}, {"name": ")") +
            name + R"(", "type": )" + kind +
            R"(, "min_value": 0, "max_value": 1, "default_value": 0}])");
  };
  write("other", "5");
  Open(OpenFile(MakeClip()), false);
  hand_->Click("key/level");
  hand_->Click("key/other");
  write("other", "3");
  ASSERT_TRUE(hand_->Until([&] { return studio().keys().Find("other") == nullptr; }));
  EXPECT_THAT(std::string(studio().notice()), HasSubstr("\"other\""));
  EXPECT_THAT(Frames("level"), ElementsAre(0));
}

TEST_F(StudioKeyframes, ASmallWindowHasRoomForEverything) {
  width_ = 960;
  height_ = 600;
  Open(OpenFile(MakeClip()), false);
  hand_->Click(std::string("key/") + kHeight);
  hand_->Screenshot("keyframes_small");
  const Marks& marks = window_->marks();
  ASSERT_TRUE(marks.Find("key_on") && marks.Find("size") && marks.Find("quality"));
  EXPECT_LT(marks.Find("key_on")->to.x, marks.Find("size")->from.x);
  EXPECT_LT(marks.Find("size")->to.x, marks.Find("quality")->from.x);
  EXPECT_LT(marks.Find("theme")->to.x, marks.Find("save_keyframes")->from.x);
  hand_->Click("size");
  hand_->Click("size/3");
  EXPECT_EQ(studio().preview_size(), PreviewSize::kQuarter);
}

TEST_F(StudioKeyframes, PicturesOfTheGuide) {
  const auto file = Path("pulse.json");
  host::WriteFile(file, R"({
    "scale_y": [{"time": 0.6, "value": 0.2, "to": "smooth"}, {"time": 4, "value": 0.95},
                {"time": 6.5, "value": 0.5, "to": "smooth"}, {"time": 9.4, "value": 0.83}],
    "position_y": [{"time": 0.6, "value": 36}, {"time": 8.1, "value": 42.75}],
    "gradient_color": [
      {"time": 2.4, "value": "3,2282478,0;9133302,45;16020150,80"},
      {"time": 10.6, "value": "3,2282478,0;9133302,60;16629077,95"}]})");
  Open(MakeDemoClip(), false, file);
  hand_->Click("group/Figure");
  studio().Seek(4);
  hand_->Key(SDLK_SPACE);
  EXPECT_TRUE(hand_->Until([&] { return studio().position() > 7; }));  // for the times of frames
  hand_->Key(SDLK_SPACE);
  studio().SeekFrame(243);
  EXPECT_TRUE(hand_->Until([&] { return studio().frame().index == 243; }));
  hand_->MoveTo({20, 120});
  hand_->Turns(5);
  hand_->Screenshot("keyframes_dark");
  hand_->Key(SDLK_t);
  hand_->Screenshot("keyframes_light");
  hand_->Click("label/scale_y");
  hand_->Click(hand_->At("key/scale_y"), SDL_BUTTON_RIGHT);
  hand_->Screenshot("keyframes_menu_light");
  hand_->Key(SDLK_t);
  hand_->Screenshot("keyframes_menu_dark");
  hand_->Click({20, 120});  // beside the menu
  studio().Pause();
  studio().SeekFrame(243);
  hand_->Click("key/scale_x");
  hand_->Key(SDLK_q, KMOD_CTRL);
  const host::Picture asking = hand_->Screenshot("keyframes_closing");
  EXPECT_LT(Brightness(asking), 110);
}

}  // namespace
}  // namespace krv::studio
