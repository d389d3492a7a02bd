#include "effects/parameter_conversion.h"

#include <gtest/gtest.h>

#include <limits>

namespace krv {
namespace {

constexpr int32_t kSmallest = std::numeric_limits<int32_t>::min();
constexpr int32_t kLargest = std::numeric_limits<int32_t>::max();

ParameterValue OfKind(int32_t kind) {
  ParameterValue value{};
  value.kind = kind;
  return value;
}

ParameterValue DoubleValue(double number) {
  ParameterValue value = OfKind(kKindDouble);
  value.as_double = number;
  return value;
}

ParameterValue BoolValue(uint8_t truth) {
  ParameterValue value = OfKind(kKindBool);
  value.as_bool = truth;
  return value;
}

ParameterValue TextValue(const char* text) {
  ParameterValue value = OfKind(kKindText);
  value.as_text = text;
  return value;
}

int32_t AsInt(const ParameterValue& value) {
  const ParameterValue converted = ConvertToKind(IntValue(-1), value);
  EXPECT_EQ(converted.kind, kKindInt);
  return converted.as_int;
}

TEST(ParameterConversion, ValueOfTheDeclaredKindIsTakenAsItIs) {
  EXPECT_EQ(AsInt(IntValue(5)), 5);
  EXPECT_EQ(ConvertToKind(FloatValue(1), FloatValue(0.1F)).as_float, 0.1F);
  EXPECT_STREQ(ConvertToKind(TextValue("a"), TextValue("b")).as_text, "b");
}

TEST(ParameterConversion, NumbersBecomeIntegersCutTowardZero) {
  EXPECT_EQ(AsInt(FloatValue(2.9F)), 2);
  EXPECT_EQ(AsInt(FloatValue(-2.9F)), -2);
  EXPECT_EQ(AsInt(DoubleValue(16711680.5)), 16711680);
  EXPECT_EQ(AsInt(BoolValue(9)), 1);
}

TEST(ParameterConversion, NumbersOutsideTheIntegersAreLimited) {
  EXPECT_EQ(AsInt(DoubleValue(1e300)), kLargest);
  EXPECT_EQ(AsInt(DoubleValue(-1e300)), kSmallest);
  EXPECT_EQ(AsInt(FloatValue(std::numeric_limits<float>::infinity())), kLargest);
  EXPECT_EQ(AsInt(FloatValue(std::numeric_limits<float>::quiet_NaN())), 0);
}

TEST(ParameterConversion, ColoursAndInternalIntegersAreIntegers) {
  ParameterValue color = OfKind(kKindColor);
  color.as_int = 0x123456;
  EXPECT_EQ(AsInt(color), 0x123456);
  const ParameterValue converted = ConvertToKind(OfKind(kKindIntInternal), color);
  EXPECT_EQ(converted.kind, kKindIntInternal);
  EXPECT_EQ(converted.as_int, 0x123456);
}

TEST(ParameterConversion, NumbersBecomeFloatsDoublesAndBooleans) {
  EXPECT_EQ(ConvertToKind(FloatValue(0), IntValue(3)).as_float, 3.0F);
  EXPECT_EQ(ConvertToKind(FloatValue(0), DoubleValue(0.1)).as_float, 0.1F);
  EXPECT_EQ(ConvertToKind(DoubleValue(0), FloatValue(0.5F)).as_double, 0.5);
  EXPECT_EQ(ConvertToKind(BoolValue(0), FloatValue(0.25F)).as_bool, 1);
  EXPECT_EQ(ConvertToKind(BoolValue(1), IntValue(0)).as_bool, 0);
}

TEST(ParameterConversion, KindsThatDoNotConvertLeaveTheDeclaredValue) {
  EXPECT_EQ(AsInt(TextValue("5")), -1);
  EXPECT_EQ(AsInt(OfKind(kKindNone)), -1);
  EXPECT_EQ(AsInt(OfKind(9)), -1);
  EXPECT_STREQ(ConvertToKind(TextValue("a"), IntValue(1)).as_text, "a");
  EXPECT_EQ(ConvertToKind(OfKind(9), IntValue(1)).kind, 9);
}

TEST(ParameterConversion, UndeclaredKindTakesAnyValue) {
  const ParameterValue value = ConvertToKind(OfKind(kKindNone), FloatValue(0.5F));
  EXPECT_EQ(value.kind, kKindFloat);
  EXPECT_EQ(value.as_float, 0.5F);
}

TEST(SplitColor, GivesFractionsOf255) {
  const ColorChannels red = SplitColor(16711680);
  EXPECT_EQ(red.red, 1.0F);
  EXPECT_EQ(red.green, 0.0F);
  EXPECT_EQ(red.blue, 0.0F);
  const ColorChannels mixed = SplitColor(0x123456);
  EXPECT_EQ(mixed.red, static_cast<float>(0x12 / 255.0));
  EXPECT_EQ(mixed.green, static_cast<float>(0x34 / 255.0));
  EXPECT_EQ(mixed.blue, static_cast<float>(0x56 / 255.0));
}

TEST(SplitColor, IgnoresTheHighestByte) {
  EXPECT_EQ(SplitColor(-1).red, 1.0F);
  EXPECT_EQ(SplitColor(kSmallest).red, 0.0F);
}

}  // namespace
}  // namespace krv
