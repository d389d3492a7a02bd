#include "json_places.h"

#include <gtest/gtest.h>

namespace krv::tool {
namespace {

TEST(SetJsonMember, ReplacesAValueAndNothingElse) {
  EXPECT_EQ(SetJsonMember("{ \"a\" : 1,\r\n\t\"b\":[1, {\"a\": 2}] }\n", "a", "\"x\""),
            "{ \"a\" : \"x\",\r\n\t\"b\":[1, {\"a\": 2}] }\n");
  EXPECT_EQ(SetJsonMember(R"({"a": 1, "b": [1, {"a": 2}]})", "b", "[]"), R"({"a": 1, "b": []})");
}

TEST(SetJsonMember, OfTwoOfANameTheLastIsReplaced) {
  EXPECT_EQ(SetJsonMember(R"({"a": 1, "a": 2})", "a", "3"), R"({"a": 1, "a": 3})");
}

TEST(SetJsonMember, AddsAMemberInFrontInTheSameForm) {
  EXPECT_EQ(SetJsonMember("{\n  \"a\": 1\n}", "b", "2"), "{\n  \"b\": 2,\n  \"a\": 1\n}");
  EXPECT_EQ(SetJsonMember(R"({"a": 1})", "b", "2"), R"({"b": 2,"a": 1})");
  EXPECT_EQ(SetJsonMember("{ }", "b", "2"), R"({"b": 2 })");
  EXPECT_EQ(SetJsonMember("\xEF\xBB\xBF{}", "b", "2"), "\xEF\xBB\xBF{\"b\": 2}");
}

TEST(SetJsonMember, TextsThatAreNoObjectsAreLeft) {
  EXPECT_EQ(SetJsonMember("[1]", "b", "2"), std::nullopt);
  EXPECT_EQ(SetJsonMember("{\"a\": }", "b", "2"), std::nullopt);
  EXPECT_EQ(SetJsonMember("", "b", "2"), std::nullopt);
}

}  // namespace
}  // namespace krv::tool
