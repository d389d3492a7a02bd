#include "description/parameter_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "description/description_files.h"
#include "krv/types.h"

namespace krv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

std::string LoadError(const std::string& name) {
  try {
    Load(name);
  } catch (const nlohmann::json::exception& error) {
    return error.what();
  }
  return {};
}

const ParameterDescription& Parameter(const EffectDescription& description,
                                      const std::string& name) {
  return *description.parameters_by_name().at(name);
}

std::vector<std::string> NamesInOrder(const EffectDescription& description) {
  std::vector<std::string> names;
  for (const auto& parameter : description.parameters()) names.push_back(parameter->name);
  return names;
}

TEST(ParameterReader, EveryKindIsReadAsItsType) {
  const auto d = Load("every_kind");
  EXPECT_THAT(NamesInOrder(*d),
              ElementsAre("int", "internal", "float", "double", "bool", "text", "color"));
  const auto expect_int = [&](const char* name, int32_t kind, int32_t low, int32_t high,
                              int32_t initial) {
    const ParameterDescription& p = Parameter(*d, name);
    EXPECT_EQ(p.default_value.kind(), kind) << name;
    EXPECT_EQ(p.min_value.View().as_int, low) << name;
    EXPECT_EQ(p.max_value.View().as_int, high) << name;
    EXPECT_EQ(p.default_value.View().as_int, initial) << name;
  };
  expect_int("int", 3, -5, 2147483647, 7);
  expect_int("internal", 4, -6, 60, 8);
  expect_int("color", 15, 0, 0xFFFFFF, 0x123456);

  EXPECT_EQ(Parameter(*d, "float").default_value.kind(), 5);
  EXPECT_EQ(Parameter(*d, "float").min_value.View().as_float, -0.5f);
  EXPECT_EQ(Parameter(*d, "float").max_value.View().as_float, 2.5f);
  EXPECT_EQ(Parameter(*d, "float").default_value.View().as_float, 1.25f);

  EXPECT_EQ(Parameter(*d, "double").default_value.kind(), 6);
  EXPECT_EQ(Parameter(*d, "double").min_value.View().as_double, -0.1);
  EXPECT_EQ(Parameter(*d, "double").max_value.View().as_double, 0.3);
  EXPECT_EQ(Parameter(*d, "double").default_value.View().as_double, 0.1);

  EXPECT_EQ(Parameter(*d, "bool").default_value.kind(), 7);
  EXPECT_EQ(Parameter(*d, "bool").default_value.View().as_bool, 1);

  EXPECT_EQ(Parameter(*d, "text").default_value.kind(), 8);
  EXPECT_STREQ(Parameter(*d, "text").min_value.View().as_text, "low");
  EXPECT_STREQ(Parameter(*d, "text").max_value.View().as_text, "high");
  EXPECT_STREQ(Parameter(*d, "text").default_value.View().as_text, "Grüße");
}

TEST(ParameterReader, BooleansCountAsZeroAndOneInEveryNumericKind) {
  const auto d = Load("booleans_as_numbers");
  for (const char* name : {"int", "internal", "color"}) {
    EXPECT_EQ(Parameter(*d, name).min_value.View().as_int, 0) << name;
    EXPECT_EQ(Parameter(*d, name).default_value.View().as_int, 1) << name;
  }
  EXPECT_EQ(Parameter(*d, "float").min_value.View().as_float, 0.0f);
  EXPECT_EQ(Parameter(*d, "float").default_value.View().as_float, 1.0f);
  EXPECT_EQ(Parameter(*d, "double").min_value.View().as_double, 0.0);
  EXPECT_EQ(Parameter(*d, "double").default_value.View().as_double, 1.0);
  EXPECT_EQ(Parameter(*d, "bool").min_value.View().as_bool, 0);
  EXPECT_EQ(Parameter(*d, "bool").default_value.View().as_bool, 1);
}

TEST(ParameterReader, WholeNumbersBecomeFloats) {
  const auto d = Load("whole_numbers_as_floats");
  EXPECT_EQ(Parameter(*d, "float").min_value.View().as_float, -3.0f);
  EXPECT_EQ(Parameter(*d, "float").max_value.View().as_float, 4.0e9f);
  EXPECT_EQ(Parameter(*d, "double").min_value.View().as_double, -3.0);
  EXPECT_EQ(Parameter(*d, "double").max_value.View().as_double, 4.0e9);
}

TEST(ParameterReader, FractionsAreCutInIntegerKinds) {
  const auto d = Load("fractions_as_integers");
  EXPECT_EQ(Parameter(*d, "int").min_value.View().as_int, -1);
  EXPECT_EQ(Parameter(*d, "int").max_value.View().as_int, 1);
  EXPECT_EQ(Parameter(*d, "int").default_value.View().as_int, 0);
}

TEST(ParameterReader, FractionsBeyondTheIntegersAreLimited) {
  const auto d = Load("fractions_beyond_integers");
  EXPECT_EQ(Parameter(*d, "int").min_value.View().as_int, -2147483647 - 1);
  EXPECT_EQ(Parameter(*d, "int").max_value.View().as_int, 2147483647);
  EXPECT_EQ(Parameter(*d, "int").default_value.View().as_int, 2147483647);
}

TEST(ParameterReader, BooleanKindIsTheIntegerComparedWithZero) {
  const auto d = Load("bool_from_numbers");
  EXPECT_EQ(Parameter(*d, "two").default_value.View().as_bool, 1);
  EXPECT_EQ(Parameter(*d, "minus").default_value.View().as_bool, 1);
  EXPECT_EQ(Parameter(*d, "zero").default_value.View().as_bool, 0);
  EXPECT_EQ(Parameter(*d, "half").default_value.View().as_bool, 0);
  EXPECT_EQ(Parameter(*d, "false").default_value.View().as_bool, 0);
}

TEST(ParameterReader, ColorOverridesTheFloatKindAndIsReadAsIntegers) {
  const auto d = Load("color_overrides_float");
  const ParameterDescription& tint = Parameter(*d, "tint");
  EXPECT_EQ(tint.default_value.kind(), kKindColor);
  EXPECT_EQ(tint.min_value.View().as_int, 0);
  EXPECT_EQ(tint.max_value.View().as_int, 0xFFFFFF);
  EXPECT_EQ(tint.default_value.View().as_int, 0x00FF00);
  EXPECT_EQ(tint.hidden, 0u);
}

TEST(ParameterReader, ColorNeedsNoType) {
  EXPECT_EQ(Parameter(*Load("color_without_type"), "tint").default_value.kind(), kKindColor);
}

TEST(ParameterReader, NoShowHidesAndKeepsKindAndValues) {
  const auto d = Load("no_show");
  const ParameterDescription& seed = Parameter(*d, "seed");
  EXPECT_EQ(seed.hidden, 1u);
  EXPECT_EQ(seed.default_value.kind(), kKindInt);
  EXPECT_EQ(seed.min_value.View().as_int, 1);
  EXPECT_EQ(seed.max_value.View().as_int, 9);
  EXPECT_EQ(seed.default_value.View().as_int, 4);
}

TEST(ParameterReader, OtherUiTypesHaveNoEffect) {
  const auto d = Load("other_ui_types");
  for (const auto& parameter : d->parameters()) {
    EXPECT_EQ(parameter->hidden, 0u) << parameter->name;
    EXPECT_EQ(parameter->default_value.kind(), kKindInt) << parameter->name;
  }
  EXPECT_EQ(d->parameters().size(), 3u);
}

TEST(ParameterReader, SecondOfTwoEqualNamesWinsByNameAndBothAreListed) {
  const auto d = Load("same_name_twice");
  EXPECT_THAT(NamesInOrder(*d), ElementsAre("speed", "other", "speed"));
  EXPECT_EQ(d->parameters_by_name().size(), 2u);
  EXPECT_EQ(d->parameters_by_name().at("speed"), d->parameters()[2]);
  EXPECT_EQ(d->parameters()[0]->default_value.kind(), kKindInt);
  EXPECT_EQ(d->parameters()[2]->default_value.kind(), kKindFloat);
}

TEST(ParameterReader, MissingDefaultGivesAZeroRecordAndKeepsTheParameter) {
  const auto d = Load("default_missing");
  const ParameterDescription& speed = Parameter(*d, "speed");
  EXPECT_EQ(speed.default_value.kind(), kKindNone);
  EXPECT_EQ(speed.default_value.View().as_double, 0.0);
  EXPECT_EQ(speed.min_value.View().as_float, 1.0f);
  EXPECT_EQ(speed.max_value.View().as_float, 2.0f);
}

TEST(ParameterReader, MissingLimitsGiveZeroRecords) {
  const auto d = Load("limits_missing");
  const ParameterDescription& speed = Parameter(*d, "speed");
  for (const StoredParameterValue* limit : {&speed.min_value, &speed.max_value}) {
    EXPECT_EQ(limit->kind(), kKindNone);
    EXPECT_EQ(limit->View().as_double, 0.0);
  }
  EXPECT_EQ(speed.default_value.View().as_float, 2.0f);
}

TEST(ParameterReader, KindsWithoutValuesAreStoredAsZeroWhateverTheFileHolds) {
  const auto d = Load("kinds_without_values");
  const ParameterDescription& nine = Parameter(*d, "nine");
  EXPECT_EQ(nine.default_value.kind(), 9);
  for (const StoredParameterValue* value :
       {&nine.min_value, &nine.max_value, &nine.default_value}) {
    EXPECT_EQ(value->View().as_double, 0.0);
  }
  EXPECT_EQ(Parameter(*d, "fourteen").default_value.kind(), 14);
  EXPECT_EQ(Parameter(*d, "fourteen").default_value.View().as_int, 0);
  EXPECT_EQ(Parameter(*d, "minus").default_value.kind(), -1);
}

TEST(ParameterReader, ValuesOfTheWrongJsonTypeRaiseTheLibrarysError) {
  EXPECT_THAT(LoadError("float_from_text"), HasSubstr("type must be number, but is string"));
  EXPECT_THAT(LoadError("double_from_text"), HasSubstr("type must be number, but is string"));
  EXPECT_THAT(LoadError("text_from_number"), HasSubstr("type must be string, but is number"));
  EXPECT_THAT(LoadError("param_type_not_a_number"),
              HasSubstr("type must be number, but is string"));
}

TEST(ParameterReader, MalformedEntriesRaiseTheLibrarysError) {
  EXPECT_THAT(LoadError("param_without_name"), HasSubstr("key 'name' not found"));
  EXPECT_THAT(LoadError("param_without_type"), HasSubstr("key 'type' not found"));
  EXPECT_THAT(LoadError("params_element_not_an_object"), HasSubstr("with string"));
  EXPECT_THAT(LoadError("params_not_an_array"), HasSubstr("actual type is object"));
}

TEST(ParameterReader, MissingParamsAreToldByTheirOwnCodeAndClearTheResult) {
  ParameterList list{std::make_shared<ParameterDescription>()};
  ParameterMap by_name{{"old", list[0]}};
  EXPECT_EQ(ReadParameters(nlohmann::json::object(), list, by_name), 3);
  EXPECT_TRUE(list.empty());
  EXPECT_TRUE(by_name.empty());
}

TEST(StoredParameterValue, OwnsItsTextThroughCopies) {
  std::string source = "a text too long for the inside of a string object";
  ParameterValue value = ZeroParameterValue(kKindText);
  value.as_text = source.c_str();
  auto first = std::make_unique<StoredParameterValue>(value);
  source.assign("overwritten");
  const StoredParameterValue copy = *first;
  EXPECT_NE(copy.View().as_text, first->View().as_text);
  first.reset();
  EXPECT_STREQ(copy.View().as_text, "a text too long for the inside of a string object");
}

TEST(StoredParameterValue, TextKindWithoutATextIsAnEmptyText) {
  EXPECT_STREQ(StoredParameterValue(ZeroParameterValue(kKindText)).View().as_text, "");
}

}  // namespace
}  // namespace krv::test
