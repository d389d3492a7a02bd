#include "json_places.h"

#include <gtest/gtest.h>

namespace krv::tool {
namespace {

TEST(JsonPlaces, NamesTheMembersOfAnObjectInOrder) {
  const JsonPlaces places(R"({ "b" : [1, {"c": "}"}], "\u0061":2,"b": "x" })");
  std::vector<std::string> found;
  for (const auto& member : places.MembersOf(places.Whole())) {
    found.push_back(member.name + "|" + std::string(places.Text(member.whole)) + "|" +
                    std::string(places.Text(member.value)));
  }
  EXPECT_EQ(found, (std::vector<std::string>{R"(b|"b" : [1, {"c": "}"}]|[1, {"c": "}"}])",
                                             R"(a|"\u0061":2|2)", R"(b|"b": "x"|"x")"}));
  EXPECT_TRUE(JsonPlaces("[1]").MembersOf({0, 3}).empty());
  EXPECT_TRUE(JsonPlaces("{ }").MembersOf({0, 3}).empty());
}

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
