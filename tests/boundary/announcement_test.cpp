#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "boundary/boundary_fixture.h"

namespace krv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// What the registrar is told; the first three calls are about the effect itself.
class Announcement : public BoundaryTest {
 protected:
  std::vector<std::string> AnnounceParameters(const std::string& params) {
    auto calls = Announce(Unique("effect"), params);
    EXPECT_GE(calls.size(), 3u);
    calls.erase(calls.begin(), calls.begin() + 3);
    return calls;
  }
};

TEST_F(Announcement, BeginsWithNamesFlagsAndOption) {
  WritePackage("package", PackageText(Unique("effect"), "", R"(, "display_name": "Größe 音")"));
  ASSERT_EQ(Register(), 0);
  EXPECT_THAT(registrar_.calls, ElementsAre("0: \"" + Unique("effect") + "\" \"Größe 音\"",
                                            "1: " + std::to_string(0x808032), "2: 0"));
}

TEST_F(Announcement, AbsentDisplayNameIsAnEmptyText) {
  EXPECT_EQ(Announce(Unique("effect"), "").at(0), "0: \"" + Unique("effect") + "\" \"\"");
}

TEST_F(Announcement, FlagsTellTheGpuDevice) {
  StartUpWithDevices({2});
  EXPECT_EQ(Announce(Unique("effect"), "").at(1), "1: " + std::to_string(0x808112));
}

TEST_F(Announcement, FloatPassesItsDefaultAfterItsLimits) {
  EXPECT_THAT(AnnounceParameters(R"({"name": "speed", "type": 5, "min_value": 0.5,
                                     "max_value": 4, "default_value": 1.25})"),
              ElementsAre(R"(4: -1 0 "speed" "speed" 0.5 4 1.25 0)"));
}

TEST_F(Announcement, IntPassesItsDefaultAfterItsLimitsAndBeforeAOne) {
  EXPECT_THAT(AnnounceParameters(R"({"name": "count", "type": 3, "min_value": -2,
                                     "max_value": 64, "default_value": 32})"),
              ElementsAre(R"(5: -1 0 "count" "count" -2 64 32 1 0)"));
}

TEST_F(Announcement, ColorPassesItsDefaultBeforeItsLimits) {
  EXPECT_THAT(AnnounceParameters(R"({"name": "tint", "ui_type": "Color", "min_value": 1,
                                     "max_value": 16777215, "default_value": 65280})"),
              ElementsAre(R"(6: -1 0 "tint" "tint" 65280 1 16777215 0)"));
}

TEST_F(Announcement, BoolPassesZeroOrOne) {
  EXPECT_THAT(AnnounceParameters(R"({"name": "on", "type": 7, "default_value": 5},
                                    {"name": "off", "type": 7, "default_value": false})"),
              ElementsAre(R"(7: -1 0 "on" "on" 1 0)", R"(7: -1 0 "off" "off" 0 0)"));
}

TEST_F(Announcement, TextPassesItsDefault) {
  EXPECT_THAT(AnnounceParameters(R"({"name": "title", "type": 8, "default_value": "Grüße"})"),
              ElementsAre(R"(14: -1 0 "title" "title" "Grüße" 0)"));
}

TEST_F(Announcement, NoShowSetsTheHiddenFlagOfEveryKind) {
  EXPECT_THAT(
      AnnounceParameters(R"({"name": "f", "type": 5, "ui_type": "NoShow", "default_value": 1},
                            {"name": "i", "type": 3, "ui_type": "NoShow", "default_value": 1},
                            {"name": "c", "type": 15, "ui_type": "NoShow", "default_value": 1},
                            {"name": "b", "type": 7, "ui_type": "NoShow", "default_value": 1},
                            {"name": "t", "type": 8, "ui_type": "NoShow", "default_value": "1"})"),
      ElementsAre(R"(4: -1 0 "f" "f" 0 0 1 1)", R"(5: -1 0 "i" "i" 0 0 1 1 1)",
                  R"(6: -1 0 "c" "c" 1 0 0 1)", R"(7: -1 0 "b" "b" 1 1)",
                  R"(14: -1 0 "t" "t" "1" 1)"));
}

TEST_F(Announcement, KindsThatAreThePluginsOwnAreNotAnnounced) {
  EXPECT_THAT(AnnounceParameters(R"({"name": "internal", "type": 4, "default_value": 1},
                                    {"name": "double", "type": 6, "default_value": 1},
                                    {"name": "nine", "type": 9, "default_value": 1})"),
              IsEmpty());
}

TEST_F(Announcement, ParameterWithoutADefaultIsNotAnnounced) {
  EXPECT_THAT(AnnounceParameters(R"({"name": "speed", "type": 5, "min_value": 0,
                                     "max_value": 1})"),
              IsEmpty());
}

TEST_F(Announcement, ParametersFollowTheFileDuplicatesIncluded) {
  EXPECT_THAT(AnnounceParameters(R"({"name": "z", "type": 3, "default_value": 1},
                                    {"name": "a", "type": 5, "default_value": 2},
                                    {"name": "z", "type": 7, "default_value": 1})"),
              ElementsAre(R"(5: -1 0 "z" "z" 0 0 1 1 0)", R"(4: -1 0 "a" "a" 0 0 2 0)",
                          R"(7: -1 0 "z" "z" 1 0)"));
}

TEST_F(Announcement, ByIndexRepeatsWhatRegistrationTold) {
  const uint32_t index = EffectCount();
  const auto first = Announce(Unique("effect"), R"({"name": "a", "type": 3, "default_value": 1})");
  for (int repetition = 0; repetition < 2; ++repetition) {
    registrar_.calls.clear();
    EXPECT_EQ(library_.register_effect(index, registrar_.object()), 0);
    EXPECT_EQ(registrar_.calls, first);
  }
}

TEST_F(Announcement, IndexEqualToTheCountIsRefused) {
  Announce(Unique("effect"), "");
  const uint32_t count = EffectCount();
  registrar_.calls.clear();
  EXPECT_EQ(library_.register_effect(count, registrar_.object()), 2);
  EXPECT_EQ(library_.register_effect(0xFFFFFFFFu, registrar_.object()), 2);
  EXPECT_THAT(registrar_.calls, IsEmpty());
}

TEST_F(Announcement, NullRegistrarIsRefused) {
  Announce(Unique("effect"), "");
  EXPECT_EQ(library_.register_effect(0, nullptr), 2);
}

TEST_F(Announcement, WronglyTypedNameEndsWithOneErrorLine) {
  WritePackage("package", PackageText(Unique("effect"), "", R"(, "display_name": 3)"));
  EXPECT_EQ(Register(), 4);
  ASSERT_THAT(host_.log, SizeIs(2));
  EXPECT_EQ(host_.log[0].level, 1);
  EXPECT_EQ(host_.log[1].level, 4);
  EXPECT_THAT(host_.log[1].text, ::testing::HasSubstr("type must be string, but is number"));
  EXPECT_THAT(registrar_.calls, IsEmpty());
}

}  // namespace
}  // namespace krv::test
