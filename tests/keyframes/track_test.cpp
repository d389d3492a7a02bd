#include "keyframes/track.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "keyframes/parameter_tracks.h"

namespace krv::tool {
namespace {

using host::HostValue;

constexpr host::FrameRate kRate{25, 1};

KeyTime Seconds(double amount) { return {amount, KeyTime::Unit::kSeconds}; }
KeyTime Frame(double amount) { return {amount, KeyTime::Unit::kFrames}; }

float FloatAt(const Track& track, double frame) { return std::get<float>(track.ValueAt(frame)); }
int32_t IntAt(const Track& track, double frame) { return std::get<int32_t>(track.ValueAt(frame)); }
std::string TextAt(const Track& track, double frame) {
  return std::get<std::string>(track.ValueAt(frame));
}

TEST(KeyTime, SecondsAreFramesAtTheRate) {
  EXPECT_EQ(Seconds(2).InFrames({30, 1}), 60);
  EXPECT_EQ(Frame(2).InFrames({30, 1}), 2);
  EXPECT_DOUBLE_EQ(Seconds(1).InFrames({30000, 1001}), 30000.0 / 1001);
}

TEST(KeyTime, SecondsOfAWholeFrameAreThatFrame) {
  for (int frame = 0; frame < 3000; ++frame) {
    EXPECT_EQ(Seconds(frame / 30.0).InFrames({30, 1}), frame);
    EXPECT_EQ(Seconds(frame * 1001 / 30000.0).InFrames({30000, 1001}), frame);
  }
  EXPECT_EQ(Seconds(0.07).InFrames({100, 1}), 7);  // 0.07 * 100 is more than 7
}

TEST(Track, OneKeyHoldsForever) {
  const Track track(kKindFloat, {{Seconds(3), 0.5f, Way::kSmooth}}, kRate);
  EXPECT_EQ(FloatAt(track, 0), 0.5f);
  EXPECT_EQ(FloatAt(track, 75), 0.5f);
  EXPECT_EQ(FloatAt(track, 1e9), 0.5f);
}

TEST(Track, OutsideOfItsKeysTheOutermostValuesHold) {
  const Track track(kKindFloat, {{Frame(10), 1.0f}, {Frame(20), 3.0f}}, kRate);
  EXPECT_EQ(FloatAt(track, 0), 1.0f);
  EXPECT_EQ(FloatAt(track, 10), 1.0f);
  EXPECT_EQ(FloatAt(track, 20), 3.0f);
  EXPECT_EQ(FloatAt(track, 21), 3.0f);
}

TEST(Track, ValuesGoTheWayOfTheKeyBefore) {
  const Track track(kKindFloat,
                    {{Frame(0), 0.0f, Way::kLinear},
                     {Frame(10), 1.0f, Way::kHold},
                     {Frame(20), 2.0f, Way::kSmooth},
                     {Frame(30), 4.0f}},
                    kRate);
  EXPECT_FLOAT_EQ(FloatAt(track, 2.5), 0.25f);
  EXPECT_EQ(FloatAt(track, 10), 1.0f);
  EXPECT_EQ(FloatAt(track, 19), 1.0f);
  EXPECT_EQ(FloatAt(track, 20), 2.0f);
  EXPECT_FLOAT_EQ(FloatAt(track, 22), static_cast<float>(2 + 2 * (3 * 0.04 - 2 * 0.008)));
}

TEST(Track, KeysMayMixSecondsAndFrames) {
  const Track track(kKindFloat, {{Frame(25), 0.0f}, {Seconds(2), 1.0f}}, kRate);
  EXPECT_FLOAT_EQ(FloatAt(track, 30), 0.2f);
}

TEST(Track, KeysAtTheSameTimeAreAJump) {
  const Track track(kKindFloat,
                    {{Frame(0), 0.0f},
                     {Frame(10), 1.0f},
                     {Frame(10), 7.0f},
                     {Frame(10), 5.0f},
                     {Frame(20), 6.0f}},
                    kRate);
  EXPECT_FLOAT_EQ(FloatAt(track, 9), 0.9f);
  EXPECT_EQ(FloatAt(track, 10), 5.0f);
  EXPECT_FLOAT_EQ(FloatAt(track, 11), 5.1f);
}

TEST(Track, KeysAtTheSameTimeAtOneOfTheEndsLeaveTheLast) {
  const Track start(kKindInt, {{Frame(0), 1}, {Frame(0), 2}, {Frame(4), 6}}, kRate);
  EXPECT_EQ(IntAt(start, 0), 2);
  const Track end(kKindInt, {{Frame(0), 1}, {Frame(4), 2}, {Frame(4), 6}}, kRate);
  EXPECT_EQ(IntAt(end, 4), 6);
  EXPECT_EQ(IntAt(end, 5), 6);
}

TEST(Track, IntegersAreRounded) {
  const Track track(kKindInt, {{Frame(0), -3}, {Frame(10), 0}}, kRate);
  EXPECT_EQ(IntAt(track, 1), -3);
  EXPECT_EQ(IntAt(track, 2), -2);
  EXPECT_EQ(IntAt(track, 9), 0);
}

TEST(Track, TheWidestIntegersDoNotOverflow) {
  const Track track(kKindInt, {{Frame(0), INT32_MIN}, {Frame(2), INT32_MAX}}, kRate);
  EXPECT_EQ(IntAt(track, 0), INT32_MIN);
  EXPECT_LE(std::abs(IntAt(track, 1)), 1);
  EXPECT_EQ(IntAt(track, 2), INT32_MAX);
}

TEST(Track, ColoursAreMixedByChannel) {
  const Track track(kKindColor, {{Frame(0), 0xFF0000}, {Frame(2), 0x0000FF}}, kRate);
  EXPECT_EQ(IntAt(track, 1), 0x800080);
}

TEST(Track, TruthAndTextsHold) {
  const Track truth(kKindBool, {{Frame(0), false}, {Frame(10), true}}, kRate);
  EXPECT_EQ(truth.ValueAt(9), HostValue(false));
  EXPECT_EQ(truth.ValueAt(10), HostValue(true));
  const Track text(kKindText, {{Frame(0), std::string("a")}, {Frame(10), std::string("b")}}, kRate);
  EXPECT_EQ(TextAt(text, 9), "a");
  EXPECT_EQ(TextAt(text, 10), "b");
}

TEST(Track, GradientsAreMixed) {
  const Track track(kKindText,
                    {{Frame(0), std::string("2,16711680,0;255,100")},
                     {Frame(2), std::string("2,255,50;255,100")},
                     {Frame(4), std::string("plain")},
                     {Frame(6), std::string("2,0,0;0,100")}},
                    kRate);
  EXPECT_EQ(TextAt(track, 0), "2,16711680,0;255,100");
  EXPECT_EQ(TextAt(track, 1), "2,8388736,25;255,100");
  EXPECT_EQ(TextAt(track, 3), "2,255,50;255,100") << "held on the way to another text";
  EXPECT_EQ(TextAt(track, 5), "plain");
}

TEST(Track, AGradientThatHoldsKeepsItsStops) {
  const Track track(kKindText,
                    {{Frame(0), std::string("2,16711680,0;255,100"), Way::kHold},
                     {Frame(2), std::string("3,255,50;255,60;255,100")}},
                    kRate);
  EXPECT_EQ(TextAt(track, 1), "2,16711680,0;255,100");
}

TEST(Track, WantsKeysInOrderAndOfItsKind) {
  EXPECT_THROW(Track(kKindInt, {}, kRate), std::invalid_argument);
  EXPECT_THROW(Track(kKindInt, {{Frame(2), 1}, {Frame(1), 1}}, kRate), std::invalid_argument);
  EXPECT_THROW(Track(kKindInt, {{Frame(2), 1.0f}}, kRate), std::invalid_argument);
  EXPECT_THROW(Track(kKindText, {{Frame(2), 1}}, kRate), std::invalid_argument);
}

TEST(Track, TheFirstKeyOutOfOrderIsNamed) {
  EXPECT_EQ(FirstKeyOutOfOrder({{Frame(1), 1}, {Seconds(1), 1}, {Frame(24), 1}}, kRate), 2u);
  EXPECT_EQ(FirstKeyOutOfOrder({{Frame(1), 1}, {Seconds(1), 1}, {Frame(25), 1}}, kRate),
            std::nullopt);
}

TEST(ParameterTracks, AnswersForItsParametersAlone) {
  ParameterTracks tracks;
  tracks.Set("size", Track(kKindInt, {{Frame(0), 0}, {Frame(10), 10}}, kRate));
  EXPECT_EQ(tracks.ValueAt("size", 4), HostValue(4));
  EXPECT_EQ(tracks.ValueAt("other", 4), std::nullopt);
  tracks.Remove("size");
  EXPECT_EQ(tracks.ValueAt("size", 4), std::nullopt);
}

TEST(LayeredValues, TheUpperSourceWins) {
  host::ParameterValues upper;
  host::ParameterValues lower;
  upper.Set("a", 1);
  lower.Set("a", 2);
  lower.Set("b", 3);
  const LayeredValues values(&upper, &lower);
  EXPECT_EQ(values.ValueAt("a", 0), HostValue(1));
  EXPECT_EQ(values.ValueAt("b", 0), HostValue(3));
  EXPECT_EQ(values.ValueAt("c", 0), std::nullopt);
}

}  // namespace
}  // namespace krv::tool
