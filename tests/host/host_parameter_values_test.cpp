// The text form of parameter values.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "parameter_values.h"

namespace krv::host {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

EffectListing Effect() {
  EffectListing effect;
  effect.unique_name = "bars";
  effect.parameters = {
      {.name = "count", .label = "count", .kind = kKindInt, .minimum = 1, .maximum = 200},
      {.name = "gain", .label = "gain", .kind = kKindFloat, .minimum = 0, .maximum = 1.5},
      {.name = "width", .label = "width", .kind = kKindFloat, .minimum = 0.05f, .maximum = 2.1f},
      {.name = "free", .label = "free", .kind = kKindFloat},
      {.name = "mirror", .label = "mirror", .kind = kKindBool, .maximum = 1},
      {.name = "color", .label = "color", .kind = kKindColor, .maximum = 0xFFFFFF},
      {.name = "gradient", .label = "gradient", .kind = kKindText},
  };
  return effect;
}

// The value after `assignment`, or nothing when it is refused.
std::optional<HostValue> Assigned(const std::string& assignment, std::string* error) {
  ParameterValues values;
  if (!values.Assign(Effect(), assignment, error)) return std::nullopt;
  return values.ValueAt(assignment.substr(0, assignment.find('=')), 0);
}

void ExpectValue(const std::string& assignment, const HostValue& wanted) {
  std::string error;
  const auto value = Assigned(assignment, &error);
  ASSERT_TRUE(value) << assignment << ": " << error;
  EXPECT_EQ(*value, wanted) << assignment;
}

std::string ErrorOf(const std::string& assignment) {
  std::string error;
  EXPECT_FALSE(Assigned(assignment, &error)) << assignment;
  EXPECT_THAT(error, Not(HasSubstr("\n"))) << assignment;
  return error;
}

TEST(HostParameterValues, ReadsEachKind) {
  ExpectValue("count=17", int32_t{17});
  ExpectValue("gain=0.25", 0.25f);
  ExpectValue("gain=1", 1.0f);
  ExpectValue("gradient=2,255,0;0,100", std::string("2,255,0;0,100"));
  ExpectValue("gradient=", std::string());
  ExpectValue("gradient=a=b", std::string("a=b"));
}

TEST(HostParameterValues, RefusesTextsThatAreNoGradientWhereOneBelongs) {
  EffectListing effect;
  effect.parameters = {{.name = "gradient_color", .label = "Gradient", .kind = kKindText}};
  ParameterValues values;
  std::string error;
  EXPECT_TRUE(values.Assign(effect, "gradient_color=2,16711680,0;255,100", &error)) << error;
  EXPECT_TRUE(values.Assign(effect, "gradient_color=", &error)) << error;
  for (const char* text : {"hello", "two,1,0"}) {
    EXPECT_FALSE(values.Assign(effect, std::string("gradient_color=") + text, &error)) << text;
    EXPECT_THAT(error, HasSubstr("\"gradient_color\" wants a gradient such as \"2,16711680,0;"));
    EXPECT_THAT(error, HasSubstr(std::string("not \"") + text + "\""));
  }
}

TEST(HostParameterValues, ReadsEveryFormOfABoolean) {
  for (const char* yes : {"true", "yes", "on", "1"})
    ExpectValue(std::string("mirror=") + yes, true);
  for (const char* no : {"false", "no", "off", "0"})
    ExpectValue(std::string("mirror=") + no, false);
}

TEST(HostParameterValues, ReadsEveryFormOfAColour) {
  ExpectValue("color=#FF8000", int32_t{0xFF8000});
  ExpectValue("color=0xff8000", int32_t{0xFF8000});
  ExpectValue("color=16744448", int32_t{0xFF8000});
}

TEST(HostParameterValues, LimitsBelongToTheRange) {
  ExpectValue("count=1", int32_t{1});
  ExpectValue("count=200", int32_t{200});
}

TEST(HostParameterValues, ParameterWithoutAnnouncedLimitsTakesAnyValue) {
  ExpectValue("free=-12345.5", -12345.5f);
}

TEST(HostParameterValues, OutsideTheLimitsIsRefusedWithTheLimits) {
  EXPECT_THAT(ErrorOf("count=201"), HasSubstr("\"count\" lies between 1 and 200"));
  EXPECT_THAT(ErrorOf("gain=-0.1"), HasSubstr("\"gain\" lies between 0 and 1.5"));
  EXPECT_THAT(ErrorOf("width=9"), HasSubstr("\"width\" lies between 0.05 and 2.1; 9 does not"));
}

TEST(HostParameterValues, WrongKindIsRefusedWithTheKindWanted) {
  EXPECT_THAT(ErrorOf("count=1.5"), HasSubstr("wants a whole number"));
  EXPECT_THAT(ErrorOf("count="), HasSubstr("wants a whole number"));
  EXPECT_THAT(ErrorOf("count=99999999999"), HasSubstr("wants a whole number"));
  EXPECT_THAT(ErrorOf("gain=loud"), HasSubstr("wants a number"));
  EXPECT_THAT(ErrorOf("gain=1x"), HasSubstr("wants a number"));
  EXPECT_THAT(ErrorOf("free=nan"), HasSubstr("wants a number"));
  EXPECT_THAT(ErrorOf("mirror=2"), HasSubstr("wants true or false"));
  EXPECT_THAT(ErrorOf("color=#12345"), HasSubstr("wants a colour"));
  EXPECT_THAT(ErrorOf("color=0x1000000"), HasSubstr("wants a colour"));
  EXPECT_THAT(ErrorOf("color=red"), HasSubstr("wants a colour"));
}

TEST(HostParameterValues, MistypedNameSuggestsTheNearest) {
  EXPECT_THAT(ErrorOf("cuont=3"), HasSubstr("did you mean \"count\"?"));
}

TEST(HostParameterValues, NameFarFromAllSuggestsNone) {
  EXPECT_THAT(ErrorOf("zzzzzzzz=3"), Not(HasSubstr("did you mean")));
}

TEST(HostParameterValues, AssignmentNeedsANameAndAnEqualsSign) {
  EXPECT_THAT(ErrorOf("count"), HasSubstr("name=value"));
  EXPECT_THAT(ErrorOf("=3"), HasSubstr("name=value"));
}

TEST(HostParameterValues, LaterAssignmentWins) {
  ParameterValues values;
  std::string error;
  ASSERT_TRUE(values.Assign(Effect(), "count=3", &error));
  ASSERT_TRUE(values.Assign(Effect(), "count=4", &error));
  EXPECT_EQ(values.ValueAt("count", 100), HostValue(int32_t{4}));
}

TEST(HostParameterValues, RefusedAssignmentKeepsTheEarlierValue) {
  ParameterValues values;
  std::string error;
  ASSERT_TRUE(values.Assign(Effect(), "count=3", &error));
  EXPECT_FALSE(values.Assign(Effect(), "count=none", &error));
  EXPECT_EQ(values.ValueAt("count", 0), HostValue(int32_t{3}));
}

TEST(HostParameterValues, UnsetParameterHasNoValue) {
  EXPECT_EQ(ParameterValues().ValueAt("count", 0), std::nullopt);
}

}  // namespace
}  // namespace krv::host
