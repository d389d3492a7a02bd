// The parts of the studio that need neither a window nor the plug-in.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

#include "host/host_test_files.h"
#include "studio/description_text.h"
#include "studio/folder_watch.h"
#include "studio/gradient.h"
#include "studio/parameter_groups.h"
#include "studio/parameter_sheet.h"
#include "studio/player_clock.h"
#include "studio/sound_feeder.h"

namespace krv::studio {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST(StudioGradient, TextAndBack) {
  const auto gradient = Gradient::Parse("3,16711680,0;65280,42.5;255,100");
  ASSERT_TRUE(gradient);
  ASSERT_EQ(gradient->stops().size(), 3u);
  EXPECT_EQ(gradient->stops()[1].colour, 0x00FF00u);
  EXPECT_EQ(gradient->stops()[1].position, 42.5f);
  EXPECT_EQ(gradient->ToText(), "3,16711680,0;65280,42.5;255,100");
}

TEST(StudioGradient, OtherTextsAreNone) {
  for (const char* text : {"", "hello", "2,255,0", "1,255,0", "2,255,0;x,50", "2,255,0;1,101",
                           "2,255,0;16777216,50", "3,255,0;1,50", "2,255,-1;1,50"}) {
    EXPECT_FALSE(Gradient::Parse(text)) << text;
  }
}

TEST(StudioGradient, ANewStopChangesNothingUntilItIsRecoloured) {
  auto gradient = Gradient::Parse("2,0,0;16711680,100");
  EXPECT_EQ(gradient->Add(50), 1u);
  EXPECT_EQ(gradient->ToText(), "3,0,0;8388608,50;16711680,100");
  EXPECT_EQ(gradient->ColourAt(25), 0x400000u);
  gradient->Recolour(1, 0x00FF00);
  EXPECT_EQ(gradient->ColourAt(50), 0x00FF00u);
}

TEST(StudioGradient, AStopThatIsMovedKeepsTheOrderAndItsColour) {
  auto gradient = Gradient::Parse("3,1,0;2,50;3,100");
  EXPECT_EQ(gradient->Move(0, 70.04f), 1u);
  EXPECT_EQ(gradient->ToText(), "3,2,50;1,70;3,100");
  EXPECT_EQ(gradient->Move(2, -5), 0u);
  EXPECT_EQ(gradient->ToText(), "3,3,0;2,50;1,70");
}

TEST(StudioGradient, TheLastTwoStopsStay) {
  auto gradient = Gradient::Parse("3,1,0;2,50;3,100");
  EXPECT_TRUE(gradient->Remove(1));
  EXPECT_FALSE(gradient->Remove(0));
  EXPECT_EQ(gradient->ToText(), "2,1,0;3,100");
}

constexpr char kDescription[] =
    "{\r\n"
    "\t\"$comment\": \"params: default_value\",\r\n"
    "  \"params\" : [\r\n"
    "    {\"name\": \"gain\",\"default_value\":1.0 , \"type\": 5},\r\n"
    "    {\"default_value\": true, \"name\": \"on\", \"type\": 7},\r\n"
    "    {\"name\": \"gain\", \"default_value\": 0.25},\r\n"
    "    { \"name\": \"text \\u00e4\\\"\", \"default_value\": \"a, ]}\\\\\" },\r\n"
    "    {\"name\": \"count\", \"nested\": {\"default_value\": 7}, \"default_value\": 3}\r\n"
    "  ],\r\n"
    "  \"unique_name\": \"x\" }\r\n\r\n";

std::string Replaced(const ValuesByName& values) {
  std::string error;
  const auto text = ReplaceDefaults(kDescription, values, &error);
  EXPECT_TRUE(text) << error;
  return text.value_or("");
}

// The description with one part exchanged.
std::string With(const std::string& from, const std::string& to) {
  std::string text = kDescription;
  const size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos);
  return text.replace(at, from.size(), to);
}

TEST(StudioDescriptionText, OnlyTheValueChanges) {
  EXPECT_EQ(Replaced({{"count", int32_t{12345}}}), With("_value\": 3}", "_value\": 12345}"));
  EXPECT_EQ(Replaced({{"on", false}}), With("true", "false"));
  EXPECT_EQ(Replaced({{"text \xC3\xA4\"", std::string("\"\xC3\xB6\n")}}),
            With("\"a, ]}\\\\\"", "\"\\\"\xC3\xB6\\n\""));
  EXPECT_EQ(Replaced({}), kDescription);
}

TEST(StudioDescriptionText, OfTwoParametersOfOneNameTheLastIsMeant) {
  EXPECT_EQ(Replaced({{"gain", 0.5f}}), With("0.25", "0.5"));
}

TEST(StudioDescriptionText, ANumberWithAFractionKeepsOne) {
  EXPECT_EQ(Replaced({{"gain", 2.0f}}), With("0.25", "2.0"));
  EXPECT_EQ(Replaced({{"count", 2.0f}}), With("_value\": 3}", "_value\": 2}"));
}

TEST(StudioDescriptionText, SeveralValuesAtOnce) {
  const std::string text = Replaced({{"gain", 0.1f}, {"count", int32_t{-1}}, {"on", false}});
  EXPECT_THAT(text, HasSubstr("{\"name\": \"gain\", \"default_value\": 0.1},\r\n"));
  EXPECT_THAT(text, HasSubstr("\"default_value\": -1}\r\n"));
  EXPECT_THAT(text, HasSubstr("{\"default_value\": false, \"name\": \"on\""));
}

TEST(StudioDescriptionText, SaysWhatIsMissing) {
  std::string error;
  EXPECT_FALSE(ReplaceDefaults(kDescription, {{"tint", int32_t{1}}}, &error));
  EXPECT_THAT(error, HasSubstr("\"tint\""));
  EXPECT_FALSE(ReplaceDefaults("{\"params\": [", {}, &error));
  EXPECT_THAT(error, HasSubstr("not valid JSON"));
  EXPECT_FALSE(ReplaceDefaults("[1]", {{"tint", int32_t{1}}}, &error));
}

class StudioFiles : public host::FilesTest {};

TEST_F(StudioFiles, SavedDefaultsAreInTheFileAndNothingElseIsInTheFolder) {
  host::WriteFile(Path("description.json"), kDescription);
  std::string error;
  EXPECT_TRUE(SaveDefaults(Path("description.json"), {{"gain", 0.75f}}, &error)) << error;
  EXPECT_EQ(host::ReadFile(Path("description.json")), With("0.25", "0.75"));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(Path("")), {}), 1);
  EXPECT_FALSE(SaveDefaults(Path("none.json"), {{"gain", 0.75f}}, &error));
  EXPECT_THAT(error, HasSubstr("none.json"));
}

TEST_F(StudioFiles, WhereNothingCanBeWrittenACopyIsAdvised) {
  host::WriteFile(Path("description.json"), kDescription);
  std::filesystem::create_directory(Path(".description.part.json"));  // which no file can replace
  std::string error;
  EXPECT_FALSE(SaveDefaults(Path("description.json"), {{"gain", 0.75f}}, &error));
  EXPECT_THAT(error, HasSubstr("krv new NAME --from EFFECT"));
  EXPECT_EQ(host::ReadFile(Path("description.json")), kDescription);
}

TEST_F(StudioFiles, AChangeIsNoticedOnceWhenItHasSettled) {
  host::WriteFile(Path("a.frag"), "one");
  host::WriteFile(Path("sub/b.frag"), "one");
  FolderWatch watch(Path(""));
  EXPECT_FALSE(watch.Changed());
  host::WriteFile(Path("sub/b.frag"), "three");
  EXPECT_FALSE(watch.Changed());  // perhaps there is more to come
  host::WriteFile(Path("a.frag"), "more");
  EXPECT_FALSE(watch.Changed());
  EXPECT_TRUE(watch.Changed());
  EXPECT_FALSE(watch.Changed());
}

TEST_F(StudioFiles, FilesThatComeAndGoAreChanges) {
  host::WriteFile(Path("a.frag"), "one");
  FolderWatch watch(Path(""));
  host::WriteFile(Path("b.frag"), "one");
  EXPECT_FALSE(watch.Changed());
  EXPECT_TRUE(watch.Changed());
  std::filesystem::remove(Path("b.frag"));
  EXPECT_FALSE(watch.Changed());
  EXPECT_TRUE(watch.Changed());
}

TEST(StudioClock, PlaysPausesAndSeeks) {
  PlayerClock clock(10);
  EXPECT_FALSE(clock.Playing(100));
  EXPECT_EQ(clock.Position(100), 0);
  clock.Play(100);
  EXPECT_DOUBLE_EQ(clock.Position(103), 3);
  clock.Pause(103);
  EXPECT_DOUBLE_EQ(clock.Position(200), 3);
  clock.Seek(8, 200);
  clock.Play(201);
  EXPECT_DOUBLE_EQ(clock.Position(202), 9);
}

TEST(StudioClock, ALoopBeginsAgainAndTheEndIsAnEnd) {
  PlayerClock clock(10);
  clock.Play(0);
  EXPECT_DOUBLE_EQ(clock.Position(23), 3);
  EXPECT_TRUE(clock.Playing(23));
  clock.SetLoop(false, 23);
  EXPECT_DOUBLE_EQ(clock.Position(29), 9);
  EXPECT_DOUBLE_EQ(clock.Position(31), 10);
  EXPECT_FALSE(clock.Playing(31));
  clock.Play(40);
  EXPECT_DOUBLE_EQ(clock.Position(41), 1);
}

TEST(StudioClock, SmallDifferencesAreWorkedOffWithoutAJump) {
  PlayerClock clock(100);
  clock.Play(0);
  for (int i = 1; i <= 60; ++i) {
    const double now = i * 0.02;
    const double before = clock.Position(now);
    clock.Follow(now + 0.05, now);
    EXPECT_LE(std::abs(clock.Position(now) - before), 0.006);
  }
  EXPECT_NEAR(clock.Position(1.2), 1.25, 0.001);
  clock.Follow(50, 1.2);
  EXPECT_NEAR(clock.Position(1.2), 1.25, 0.001);
}

// One channel at 1000 Hz; sample n is n + 1.
SoundTrack Counting(int count) {
  SoundTrack track;
  track.format = {1000, 1, 0};
  for (int i = 0; i < count; ++i) track.samples.push_back(static_cast<int16_t>(i + 1));
  return track;
}

TEST(StudioSound, SilenceLiesAroundTheTrack) {
  const SoundTrack track = Counting(4);
  std::vector<int16_t> samples;
  track.Read(-2, 4, &samples);
  EXPECT_THAT(samples, ElementsAre(0, 0, 1, 2));
  track.Read(3, 3, &samples);
  EXPECT_THAT(samples, ElementsAre(4, 0, 0));
  track.Read(9, 2, &samples);
  EXPECT_THAT(samples, ElementsAre(0, 0));
}

TEST(StudioSound, PeaksOfEqualParts) {
  SoundTrack track;
  track.format = {1000, 2, 0};
  track.samples = {0, 0, 16384, 0, 0, -32768, 0, 0};
  EXPECT_THAT(track.Peaks(2, 4), ElementsAre(0.5f, 1.0f));
  EXPECT_THAT(track.Peaks(4, 8), ElementsAre(0.5f, 1.0f, 0.0f, 0.0f));
}

TEST(StudioSound, ADeviceGetsTheSamplesInTheOrderOfTheClip) {
  const SoundTrack track = Counting(1000);
  PlayerClock clock(1);
  SoundFeeder feeder(&track, &clock);
  std::vector<int16_t> out(100, -1);
  feeder.Fill(out.data(), 100, 0);
  EXPECT_THAT(out, Each(0));  // paused
  clock.Seek(0.5, 10);
  clock.Play(10);
  feeder.Fill(out.data(), 100, 10);
  // Heard when the 100 samples before have been played.
  EXPECT_EQ(out.front(), 601);
  for (int buffer = 1; buffer < 20; ++buffer) {
    const int16_t last = out.back();
    feeder.Fill(out.data(), 100, 10 + 0.1 * buffer);
    EXPECT_EQ(out.front(), last % 1000 + 1) << "buffer " << buffer;
  }
}

TEST(StudioSound, TheClockFollowsADeviceThatRunsSlowly) {
  const SoundTrack track = Counting(30000);
  PlayerClock clock(60);
  SoundFeeder feeder(&track, &clock);
  clock.Play(0);
  std::vector<int16_t> out(20);
  constexpr double kSlow = 1.002;  // a second of its own takes longer
  double played = 0;
  for (int buffer = 0; buffer < 1000; ++buffer) {
    feeder.Fill(out.data(), 20, buffer * 0.02 * kSlow);
    played = static_cast<double>(out.front() - 1) / 1000 - 0.02;
  }
  EXPECT_NEAR(clock.Position(999 * 0.02 * kSlow), played, 0.005);
  EXPECT_GT(999 * 0.02 * kSlow - played, 0.02);  // by itself it would be ahead
}

TEST(StudioSound, MutedSoundGoesOn) {
  const SoundTrack track = Counting(1000);
  PlayerClock clock(1);
  SoundFeeder feeder(&track, &clock);
  feeder.SetMuted(true);
  clock.Play(0);
  std::vector<int16_t> out(100, -1);
  feeder.Fill(out.data(), 100, 0);
  EXPECT_THAT(out, Each(0));
  feeder.SetMuted(false);
  feeder.Fill(out.data(), 100, 0.1);
  EXPECT_EQ(out.front(), 201);
}

TEST(StudioSound, TheEndIsSilent) {
  const SoundTrack track = Counting(1000);
  PlayerClock clock(1);
  clock.SetLoop(false, 0);
  clock.Seek(0.85, 0);
  clock.Play(0);
  SoundFeeder feeder(&track, &clock);
  std::vector<int16_t> out(100, -1);
  feeder.Fill(out.data(), 100, 0);
  EXPECT_EQ(out[0], 951);
  EXPECT_EQ(out[49], 1000);
  EXPECT_EQ(out[50], 0);
}

host::EffectListing Effect() {
  host::EffectListing effect;
  effect.unique_name = "fx";
  effect.parameters = {{"spectrum_count", "", kKindInt, 1, 200, 63, "", false},
                       {"position_x", "", kKindFloat, 0, 100, 50, "", false},
                       {"audio_mirror", "", kKindBool, 0, 0, 1, "", false},
                       {"geometry_type", "", kKindInt, 0, 5, 2, "", true},
                       {"color", "", kKindColor, 0, 0xFFFFFF, 0xFFFFFF, "", false},
                       {"spectrum_round", "", kKindFloat, 0, 1, 1, "", false},
                       {"gradient_color", "", kKindText, 0, 0, 0, "2,0,0;255,100", false}};
  return effect;
}

TEST(StudioSheet, OnlyDifferencesFromTheDefaultsAreKept) {
  ParameterSheet sheet;
  sheet.SetEffect(Effect());
  const auto& count = *sheet.effect().Find("spectrum_count");
  EXPECT_EQ(sheet.Value(count), host::HostValue(int32_t{63}));
  sheet.Set(count, int32_t{1000});
  EXPECT_EQ(sheet.Value(count), host::HostValue(int32_t{200}));
  EXPECT_TRUE(sheet.IsChanged("spectrum_count"));
  sheet.Set(count, int32_t{63});
  EXPECT_FALSE(sheet.IsChanged("spectrum_count"));
  EXPECT_TRUE(sheet.changed().empty());
}

TEST(StudioSheet, ANewVersionKeepsTheValuesThatItHasRoomFor) {
  ParameterSheet sheet;
  sheet.SetEffect(Effect());
  sheet.Set(*sheet.effect().Find("spectrum_count"), int32_t{150});
  sheet.Set(*sheet.effect().Find("position_x"), 70.0f);
  sheet.Set(*sheet.effect().Find("audio_mirror"), false);
  sheet.Set(*sheet.effect().Find("spectrum_round"), 0.5f);
  host::EffectListing next = Effect();
  next.parameters[0].maximum = 100;                    // less room
  next.parameters[1].default_number = 70;              // now the default
  next.parameters[2].kind = kKindInt;                  // another kind
  next.parameters.erase(next.parameters.begin() + 5);  // gone
  sheet.SetEffect(next);
  EXPECT_EQ(sheet.changed(), (ValuesByName{{"spectrum_count", int32_t{100}}}));
}

TEST(StudioSheet, EveryChangeIsANewRevision) {
  ParameterSheet sheet;
  sheet.SetEffect(Effect());
  const uint64_t before = sheet.revision();
  sheet.Set(*sheet.effect().Find("position_x"), 70.0f);
  const uint64_t changed = sheet.revision();
  EXPECT_NE(changed, before);
  sheet.Reset("position_x");
  EXPECT_NE(sheet.revision(), changed);
  EXPECT_TRUE(sheet.changed().empty());
}

TEST(StudioGroups, ComeInTheOrderOfTheDeclarationWithTheHiddenLast) {
  const auto groups = GroupParameters(Effect());
  ASSERT_EQ(groups.size(), 5u);
  EXPECT_EQ(groups[0].title, "Figure");
  EXPECT_THAT(groups[0].parameters, ElementsAre(0u, 5u));
  EXPECT_EQ(groups[1].title, "Placement");
  EXPECT_EQ(groups[2].title, "Sound");
  EXPECT_EQ(groups[3].title, "Colour");
  EXPECT_THAT(groups[3].parameters, ElementsAre(4u, 6u));
  EXPECT_EQ(groups[4].title, "Hidden in hosts");
  EXPECT_EQ(ReadableName("spectrum_minimum_height"), "Spectrum minimum height");
}

}  // namespace
}  // namespace krv::studio
