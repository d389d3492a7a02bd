// Values over time as the studio edits them, without a window.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

#include "host/host_test_files.h"
#include "keyframes/keyframe_writer.h"
#include "studio/keyframe_file.h"
#include "studio/value_sheet.h"

namespace krv::studio {
namespace {

using host::HostValue;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using tool::Way;

constexpr host::FrameRate kRate{10, 1};

host::EffectListing Effect() {
  host::EffectListing effect;
  effect.unique_name = "fx";
  effect.parameters = {
      {.name = "gain", .label = "", .kind = kKindFloat, .maximum = 100, .default_number = 5},
      {.name = "count", .label = "", .kind = kKindInt, .maximum = 9, .default_number = 1},
      {.name = "tint", .label = "", .kind = kKindColor, .maximum = 0xFFFFFF},
      {.name = "ramp", .label = "", .kind = kKindText, .default_text = "2,0,0;255,100"},
  };
  return effect;
}

class StudioKeys : public host::FilesTest {
 protected:
  StudioKeys() { sheet_.SetEffect(effect_); }

  const host::ParameterListing& gain() const { return *effect_.Find("gain"); }
  const host::ParameterListing& count() const { return *effect_.Find("count"); }

  float GainAt(int64_t frame) const { return std::get<float>(sheet_.ValueAt(gain(), frame)); }
  std::vector<int64_t> Frames() const { return sheet_.keys().Frames("gain"); }

  // Sets a key of the gain.
  void Put(int64_t frame, float value) {
    if (!sheet_.keys().HasKeyAt("gain", frame)) sheet_.ToggleKey(gain(), frame);
    sheet_.Set(gain(), frame, value);
  }

  void Load(const std::string& text) {
    host::WriteFile(Path("params.json"), text);
    std::string error;
    const auto tracks = LoadKeyframes(Path("params.json"), effect_, kRate, &error);
    ASSERT_TRUE(tracks) << error;
    sheet_.Load(*tracks);
  }

  std::string Text() const { return tool::KeyframeText(sheet_.Tracks()); }

  const host::EffectListing effect_ = Effect();
  ValueSheet sheet_{kRate};
};

TEST_F(StudioKeys, WithoutKeysAValueHoldsEverywhere) {
  sheet_.Set(gain(), 7, 20.0f);
  EXPECT_EQ(GainAt(0), 20);
  EXPECT_EQ(GainAt(50), 20);
  EXPECT_TRUE(sheet_.keys().empty());
  EXPECT_EQ(Text(), "{\n  \"gain\": 20\n}\n");
}

TEST_F(StudioKeys, TheFirstKeyTakesTheValueThatThereIs) {
  sheet_.Set(gain(), 0, 20.0f);
  sheet_.ToggleKey(gain(), 10);
  EXPECT_THAT(Frames(), ElementsAre(10));
  EXPECT_EQ(GainAt(0), 20);
  EXPECT_FALSE(sheet_.constants().IsChanged("gain"));
}

TEST_F(StudioKeys, AChangedValueSetsOrReplacesTheKeyOfTheFrame) {
  Put(10, 20);
  sheet_.Set(gain(), 20, 40.0f);
  EXPECT_THAT(Frames(), ElementsAre(10, 20));
  EXPECT_EQ(GainAt(15), 30);
  sheet_.Set(gain(), 20, 60.0f);
  EXPECT_THAT(Frames(), ElementsAre(10, 20));
  EXPECT_EQ(GainAt(15), 40);
  sheet_.Set(gain(), 5, 200.0f);
  EXPECT_EQ(GainAt(5), 100);  // the limit
}

TEST_F(StudioKeys, AKeyBetweenTwoChangesNothing) {
  Put(10, 20);
  Put(20, 40);
  sheet_.ToggleKey(gain(), 14);
  EXPECT_THAT(Frames(), ElementsAre(10, 14, 20));
  EXPECT_EQ(GainAt(14), 28);
  EXPECT_EQ(GainAt(17), 34);
}

TEST_F(StudioKeys, TheValueOfTheLastKeyThatIsRemovedStays) {
  Put(10, 20);
  Put(20, 40);
  sheet_.ToggleKey(gain(), 10);
  EXPECT_EQ(GainAt(0), 40);
  sheet_.ToggleKey(gain(), 20);
  EXPECT_TRUE(sheet_.keys().empty());
  EXPECT_EQ(sheet_.constants().Value(gain()), HostValue(40.0f));
}

TEST_F(StudioKeys, WithAllKeysRemovedTheValueOfTheFrameStays) {
  Put(10, 20);
  Put(20, 40);
  sheet_.RemoveKeys(gain(), 15);
  EXPECT_TRUE(sheet_.keys().empty());
  EXPECT_EQ(GainAt(0), 30);
}

TEST_F(StudioKeys, TheWayIsThatOfTheKeyAtTheFrameOrBeforeIt) {
  Put(10, 20);
  Put(20, 40);
  EXPECT_FALSE(sheet_.keys().WayAt("gain", 9));
  sheet_.SetWay("gain", 9, Way::kHold);  // there is no key before
  EXPECT_EQ(sheet_.keys().WayAt("gain", 10), Way::kLinear);
  sheet_.SetWay("gain", 15, Way::kHold);
  EXPECT_EQ(sheet_.keys().WayAt("gain", 10), Way::kHold);
  EXPECT_EQ(sheet_.keys().WayAt("gain", 20), Way::kLinear);
  EXPECT_EQ(GainAt(19), 20);
  sheet_.SetWay("gain", 10, Way::kSmooth);
  EXPECT_EQ(GainAt(15), 30);
  EXPECT_LT(GainAt(12), 24);
}

TEST_F(StudioKeys, TheWayFromKeysOfOneFrameIsToldWhereTheyAgree) {
  Put(10, 20);
  sheet_.ToggleKey(count(), 10);
  sheet_.SetWay("gain", 10, Way::kSmooth);
  EXPECT_EQ(sheet_.keys().WayFrom("gain", 10), Way::kSmooth);
  EXPECT_FALSE(sheet_.keys().WayFrom("gain", 11));
  EXPECT_FALSE(sheet_.keys().WayFrom("", 10));
  sheet_.SetWay("count", 10, Way::kSmooth);
  EXPECT_EQ(sheet_.keys().WayFrom("", 10), Way::kSmooth);
}

TEST_F(StudioKeys, ColoursAndGradientsMoveToo) {
  const auto& tint = *effect_.Find("tint");
  const auto& ramp = *effect_.Find("ramp");
  sheet_.ToggleKey(tint, 0);
  sheet_.Set(tint, 0, int32_t{0xFF0000});
  sheet_.Set(tint, 10, int32_t{0x0000FF});
  EXPECT_EQ(sheet_.ValueAt(tint, 5), HostValue(int32_t{0x800080}));
  sheet_.ToggleKey(ramp, 0);
  sheet_.Set(ramp, 10, std::string("2,255,50;255,100"));
  EXPECT_EQ(sheet_.ValueAt(ramp, 5), HostValue(std::string("2,128,25;255,100")));
  const std::string text = Text();
  EXPECT_THAT(text, HasSubstr("{\"frame\": 10, \"value\": \"#0000FF\"}"));
  EXPECT_THAT(text, HasSubstr("{\"color\": \"#0000FF\", \"position\": 50}"));
  Load(text);
  EXPECT_EQ(Text(), text);
}

TEST_F(StudioKeys, ANewKeyGoesOnAsTheOneBeforeIt) {
  Put(10, 20);
  Put(20, 40);
  sheet_.SetWay("gain", 10, Way::kHold);
  sheet_.ToggleKey(gain(), 15);
  EXPECT_EQ(sheet_.keys().WayAt("gain", 15), Way::kHold);
  EXPECT_EQ(GainAt(19), 20);
}

TEST_F(StudioKeys, KeysMoveUpToTheirNeighbours) {
  Put(10, 20);
  Put(20, 40);
  Put(30, 60);
  EXPECT_EQ(sheet_.MoveKeys("gain", 20, 26), 26);
  EXPECT_THAT(Frames(), ElementsAre(10, 26, 30));
  EXPECT_EQ(GainAt(26), 40);
  EXPECT_EQ(sheet_.MoveKeys("gain", 26, 99), 29);
  EXPECT_EQ(sheet_.MoveKeys("gain", 29, -5), 11);
  EXPECT_EQ(sheet_.MoveKeys("gain", 10, -5), 0);
  EXPECT_EQ(sheet_.MoveKeys("gain", 25, 27), 25);  // there is none
  EXPECT_THAT(Frames(), ElementsAre(0, 11, 30));
}

TEST_F(StudioKeys, KeysOfAllParametersMoveTogether) {
  Put(10, 20);
  Put(20, 40);
  sheet_.ToggleKey(count(), 10);
  sheet_.ToggleKey(count(), 14);
  EXPECT_THAT(sheet_.keys().Frames(""), ElementsAre(10, 14, 20));
  EXPECT_EQ(sheet_.MoveKeys("", 10, 16), 13);  // the count's next key is in the way
  EXPECT_THAT(Frames(), ElementsAre(13, 20));
  EXPECT_THAT(sheet_.keys().Frames("count"), ElementsAre(13, 14));
  EXPECT_EQ(sheet_.MoveKeys("gain", 13, 16), 16);
  EXPECT_THAT(sheet_.keys().Frames("count"), ElementsAre(13, 14));
}

TEST_F(StudioKeys, AKeyBetweenFramesBelongsToTheNearest) {
  Load(R"({"gain": [{"time": 1.04, "value": 20}, {"time": 2.06, "value": 40}]})");
  EXPECT_THAT(Frames(), ElementsAre(10, 21));
  EXPECT_TRUE(sheet_.keys().HasKeyAt("gain", 10));
  sheet_.Set(gain(), 21, 60.0f);
  EXPECT_THAT(Frames(), ElementsAre(10, 21));
  EXPECT_EQ(GainAt(21), 60);  // now at the frame itself
  sheet_.ToggleKey(gain(), 10);
  EXPECT_THAT(Frames(), ElementsAre(21));
}

TEST_F(StudioKeys, OfAJumpTheSideFromThereOnIsReplaced) {
  Load(R"({"gain": [{"frame": 0, "value": 0}, {"frame": 10, "value": 20},
                    {"time": 1, "value": 50}, {"frame": 20, "value": 60}]})");
  sheet_.Set(gain(), 10, 40.0f);
  EXPECT_EQ(GainAt(5), 10);
  EXPECT_EQ(GainAt(10), 40);
  EXPECT_EQ(GainAt(15), 50);
  EXPECT_EQ(sheet_.MoveKeys("gain", 10, 12), 12);
  EXPECT_EQ(GainAt(6), 10);
  EXPECT_EQ(GainAt(12), 40);
}

TEST_F(StudioKeys, EverythingThatDiffersFromTheDefaultsIsSavedAndRead) {
  sheet_.Set(count(), 0, int32_t{3});
  Put(10, 20);
  Put(25, 0.5f);
  sheet_.SetWay("gain", 10, Way::kSmooth);
  const std::string text = Text();
  EXPECT_EQ(text,
            "{\n"
            "  \"count\": 3,\n"
            "  \"gain\": [\n"
            "    {\"frame\": 10, \"value\": 20, \"to\": \"smooth\"},\n"
            "    {\"frame\": 25, \"value\": 0.5}\n"
            "  ]\n"
            "}\n");
  sheet_.RemoveKeys(gain(), 0);
  sheet_.ResetAll();
  std::string error;
  ASSERT_TRUE(SaveKeyframes(Path("saved.json"), text, &error)) << error;
  Load(host::ReadFile(Path("saved.json")));
  EXPECT_EQ(Text(), text);
  EXPECT_EQ(sheet_.constants().Value(count()), HostValue(int32_t{3}));
  EXPECT_THAT(Frames(), ElementsAre(10, 25));
}

TEST_F(StudioKeys, RemarksOfTheFileAndOfKeysStay) {
  Load(R"({"$schema": "params.schema.json", "$comment": "mine",
           "gain": [{"time": 0, "value": 20, "$comment": "a"},
                    {"time": 2.06, "value": 40, "$comment": "b"}],
           "count": [{"frame": 5, "value": 3, "$comment": "c"}]})");
  sheet_.Set(gain(), 0, 30.0f);
  sheet_.Set(gain(), 21, 60.0f);  // in place of the key between the frames
  sheet_.MoveKeys("gain", 0, 10);
  Put(30, 80);
  EXPECT_EQ(Text(),
            "{\n"
            "  \"$schema\": \"params.schema.json\",\n"
            "  \"$comment\": \"mine\",\n"
            "  \"count\": [\n"
            "    {\"frame\": 5, \"value\": 3, \"$comment\": \"c\"}\n"
            "  ],\n"
            "  \"gain\": [\n"
            "    {\"frame\": 10, \"value\": 30, \"$comment\": \"a\"},\n"
            "    {\"frame\": 21, \"value\": 60, \"$comment\": \"b\"},\n"
            "    {\"frame\": 30, \"value\": 80}\n"
            "  ]\n"
            "}\n");
}

TEST_F(StudioKeys, KeysOfParametersThatAreGoneOrOthersNowGo) {
  Put(10, 20);
  Put(20, 80);
  sheet_.ToggleKey(count(), 10);
  sheet_.ToggleKey(*effect_.Find("tint"), 10);
  host::EffectListing next = Effect();
  next.parameters[0].maximum = 50;      // less room
  next.parameters[2].kind = kKindInt;   // another kind
  next.parameters[1].name = "counted";  // gone
  EXPECT_THAT(sheet_.SetEffect(next), ElementsAre("count", "tint"));
  EXPECT_THAT(Frames(), ElementsAre(10, 20));
  EXPECT_EQ(GainAt(20), 50);
  EXPECT_EQ(sheet_.keys().tracks().tracks().size(), 1u);
  EXPECT_THAT(sheet_.SetEffect(next), IsEmpty());
}

TEST_F(StudioKeys, EveryChangeIsANewRevision) {
  uint64_t before = sheet_.revision();
  const auto changed = [&] {
    const uint64_t old = std::exchange(before, sheet_.revision());
    return before != old;
  };
  Put(10, 20);
  EXPECT_TRUE(changed());
  sheet_.SetWay("gain", 10, Way::kHold);
  EXPECT_TRUE(changed());
  sheet_.MoveKeys("gain", 10, 12);
  EXPECT_TRUE(changed());
  sheet_.ToggleKey(gain(), 12);
  EXPECT_TRUE(changed());
  EXPECT_FALSE(changed());
}

TEST_F(StudioKeys, AFileThatCannotBeReadIsNamedWithTheLine) {
  std::string error;
  EXPECT_FALSE(LoadKeyframes(Path("none.json"), effect_, kRate, &error));
  EXPECT_THAT(error, HasSubstr("none.json"));
  host::WriteFile(Path("bad.json"), "{\n\"gain\": 101,\n\"hue\": 1\n}");
  EXPECT_FALSE(LoadKeyframes(Path("bad.json"), effect_, kRate, &error));
  EXPECT_THAT(error, HasSubstr("bad.json:2: error: /gain: parameter \"gain\" lies between"));
  EXPECT_THAT(error, EndsWith("(and 1 more)"));
}

TEST_F(StudioKeys, AFileThatCannotBeWrittenIsNamed) {
  std::string error;
  EXPECT_FALSE(SaveKeyframes(Path("none/params.json"), "{}", &error));
  EXPECT_THAT(error, HasSubstr("params.json: cannot be written"));
}

}  // namespace
}  // namespace krv::studio
