// Files of keyframes: what is read, what is refused and where, what is written, and the schema.
#include <gmock/gmock.h>

#include <fstream>
#include <nlohmann/json.hpp>

#include "keyframes/keyframe_reader.h"
#include "keyframes/keyframe_writer.h"
#include "packages/description_schema.h"
#include "support/scratch_folder.h"

namespace krv::tool {
namespace {

using host::HostValue;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

constexpr host::FrameRate kRate{10, 1};

host::EffectListing Effect() {
  host::EffectListing effect;
  effect.unique_name = "bars";
  effect.parameters = {
      {.name = "count", .label = "count", .kind = kKindInt, .minimum = 1, .maximum = 200},
      {.name = "gain", .label = "gain", .kind = kKindFloat, .minimum = 0, .maximum = 1.5},
      {.name = "mirror", .label = "mirror", .kind = kKindBool, .maximum = 1},
      {.name = "color", .label = "color", .kind = kKindColor, .maximum = 0xFFFFFF},
      {.name = "gradient", .label = "gradient", .kind = kKindText},
      {.name = "gradient_color", .label = "", .kind = kKindText, .default_text = "plain"},
  };
  return effect;
}

class KeyframeFile : public ::testing::Test {
 protected:
  std::optional<ParameterTracks> Read(const std::string& text) {
    findings_.clear();
    return ReadKeyframes(folder_.Write("params.json", text), Effect(), kRate, &findings_);
  }

  ParameterTracks ReadWell(const std::string& text) {
    auto tracks = Read(text);
    EXPECT_TRUE(tracks) << text;
    EXPECT_THAT(Messages(), IsEmpty()) << text;
    EXPECT_THAT(schema_.Refusals(nlohmann::json::parse(text)), IsEmpty()) << text;
    return tracks.value_or(ParameterTracks());
  }

  // The only finding about a text that is refused, as a user sees it, from the line on.
  std::string ErrorOf(const std::string& text) {
    EXPECT_FALSE(Read(text)) << text;
    if (findings_.size() != 1) {
      ADD_FAILURE() << text << ::testing::PrintToString(Messages());
      return {};
    }
    const std::string error = ToText(findings_.front());
    const std::string file = folder_.text() + "/params.json:";
    EXPECT_THAT(error.substr(0, file.size()), EndsWith("params.json:"));
    return error.substr(file.size());
  }

  // As ErrorOf, of a text that the schema refuses as well.
  std::string ErrorOfBoth(const std::string& text) {
    EXPECT_FALSE(schema_.Refusals(nlohmann::json::parse(text)).empty()) << text;
    return ErrorOf(text);
  }

  std::vector<std::string> Messages() const {
    std::vector<std::string> messages;
    for (const Finding& finding : findings_) messages.push_back(ToText(finding));
    return messages;
  }

  test::ScratchFolder folder_;
  test::DescriptionSchema schema_{KRV_PACKAGES "/params.schema.json"};
  Findings findings_;
};

TEST_F(KeyframeFile, EveryKindOfValueIsRead) {
  const auto tracks = ReadWell(R"({
    "$schema": "params.schema.json", "count": 7, "gain": 0.5, "mirror": true, "color": "#ff8000",
    "gradient": [{"color": "#ff0000", "position": 0}, {"color": 255, "position": 99.5}]})");
  EXPECT_EQ(tracks.tracks().size(), 5u);
  EXPECT_EQ(tracks.ValueAt("count", 3), HostValue(7));
  EXPECT_EQ(tracks.ValueAt("gain", 3), HostValue(0.5f));
  EXPECT_EQ(tracks.ValueAt("mirror", 3), HostValue(true));
  EXPECT_EQ(tracks.ValueAt("color", 3), HostValue(0xFF8000));
  EXPECT_EQ(tracks.ValueAt("gradient", 3), HostValue(std::string("2,16711680,0;255,99.5")));
}

TEST_F(KeyframeFile, OtherFormsOfValuesAreRead) {
  const auto tracks = ReadWell(R"({"count": 7.0, "gain": 1, "color": 255, "gradient": "a text"})");
  EXPECT_EQ(tracks.ValueAt("count", 0), HostValue(7));
  EXPECT_EQ(tracks.ValueAt("gain", 0), HostValue(1.0f));
  EXPECT_EQ(tracks.ValueAt("color", 0), HostValue(255));
  EXPECT_EQ(tracks.ValueAt("gradient", 0), HostValue(std::string("a text")));
  EXPECT_TRUE(ReadWell("{}").tracks().empty());
}

TEST_F(KeyframeFile, KeysAreRead) {
  const auto tracks = ReadWell(R"({"gain": [
    {"time": 1, "value": 0, "$comment": "the first beat"},
    {"frame": 20, "value": 1, "to": "hold"},
    {"time": 2.5, "value": 0.5, "to": "smooth"},
    {"time": 3.5, "value": 1.5, "to": "linear"}]})");
  EXPECT_EQ(tracks.ValueAt("gain", 9), HostValue(0.0f));
  EXPECT_EQ(tracks.ValueAt("gain", 15), HostValue(0.5f));
  EXPECT_EQ(tracks.ValueAt("gain", 24), HostValue(1.0f));
  EXPECT_EQ(tracks.ValueAt("gain", 25), HostValue(0.5f));
  EXPECT_EQ(tracks.ValueAt("gain", 30), HostValue(1.0f));
}

TEST_F(KeyframeFile, KeysOfGradientsMayBeStopsAndTexts) {
  const auto tracks = ReadWell(R"({"gradient": [
    {"frame": 0, "value": "2,16711680,0;255,100"},
    {"frame": 2, "value": [{"color": "#0000ff", "position": 50},
                           {"color": "#0000FF", "position": 100}]}]})");
  EXPECT_EQ(tracks.ValueAt("gradient", 1), HostValue(std::string("2,8388736,25;255,100")));
}

TEST_F(KeyframeFile, ErrorsNameTheLineAndThePlace) {
  EXPECT_EQ(ErrorOf("{\n  \"gain\": [\n    {\"time\": 0, \"value\": 0},\n"
                    "    {\"time\": 1, \"value\": 3}\n  ]\n}"),
            "4: error: /gain/1/value: parameter \"gain\" lies between 0 and 1.5; 3 does not");
}

TEST_F(KeyframeFile, EveryErrorIsNamed) {
  EXPECT_FALSE(Read("{\n\"count\": 0.5,\n\"gain\": 9,\n\"mirror\": [{\"frame\": 0}]\n}"));
  EXPECT_THAT(Messages(),
              ElementsAre(HasSubstr(":2: error: /count: "), HasSubstr(":3: error: /gain: "),
                          HasSubstr(":4: error: /mirror/0: the key has no \"value\"")));
}

TEST_F(KeyframeFile, UnknownParametersAreRefusedWithTheNearest) {
  EXPECT_EQ(ErrorOf(R"({"colour": 1})"),
            "1: error: /colour: effect \"bars\" has no parameter \"colour\"; did you mean "
            "\"color\"?");
  EXPECT_THAT(ErrorOf(R"({"a/b": 1})"), StartsWith("1: error: /a~1b: "));
}

TEST_F(KeyframeFile, ValuesOfAnotherKindAreRefused) {
  EXPECT_EQ(ErrorOf(R"({"count": 1.5})"),
            "1: error: /count: parameter \"count\" wants a whole number, not 1.5");
  EXPECT_THAT(ErrorOf(R"({"count": "7"})"), HasSubstr("wants a whole number, not \"7\""));
  EXPECT_THAT(ErrorOf(R"({"count": 3000000000})"), HasSubstr("wants a whole number"));
  EXPECT_THAT(ErrorOf(R"({"gain": true})"), HasSubstr("wants a number, not true"));
  EXPECT_THAT(ErrorOf(R"({"gain": 1e300})"), HasSubstr("wants a number"));
  EXPECT_THAT(ErrorOf(R"({"mirror": 1})"), HasSubstr("wants true or false, not 1"));
  EXPECT_EQ(ErrorOf(R"({"color": "red"})"),
            "1: error: /color: give a colour as \"#RRGGBB\" or a number, not \"red\"");
  EXPECT_THAT(ErrorOf(R"({"color": "0xFF0000"})"), HasSubstr("or a number, not \"0xFF0000\""));
  EXPECT_THAT(ErrorOf(R"({"color": "#12345"})"), HasSubstr("give a colour as \"#RRGGBB\""));
  EXPECT_THAT(ErrorOf(R"({"color": 16777216})"), HasSubstr("give a colour as \"#RRGGBB\""));
  EXPECT_THAT(ErrorOf(R"({"gradient": 3})"), HasSubstr("wants a text, not 3"));
  EXPECT_THAT(ErrorOfBoth(R"({"gain": null})"), HasSubstr("wants a number, not null"));
  EXPECT_THAT(ErrorOfBoth(R"({"gain": {"time": 0, "value": 1}})"), HasSubstr("wants a number"));
}

TEST_F(KeyframeFile, StopsFitGradientsAlone) {
  EXPECT_THAT(ErrorOf(R"({"gain": [{"color": 1, "position": 0}, {"color": 1, "position": 9}]})"),
              HasSubstr("wants a number, not [{"));
}

TEST_F(KeyframeFile, TextsThatAreNoGradientsAreRefusedWhereOneBelongs) {
  EXPECT_EQ(ErrorOf("{\n\"gradient_color\": \"hello\"}"),
            "2: error: /gradient_color: give a gradient as a list of stops, or as a text like "
            "\"2,16711680,0;255,100\", not \"hello\"");
  EXPECT_EQ(ErrorOf("{\"gradient_color\": [\n{\"time\": 0, \"value\": \"2,255,0;0,100\"},\n"
                    "{\"time\": 1,\n\"value\": \"two,1,0\"}]}"),
            "4: error: /gradient_color/1/value: give a gradient as a list of stops, or as a text "
            "like \"2,16711680,0;255,100\", not \"two,1,0\"");
}

TEST_F(KeyframeFile, WhateverThePlugInMakesAGradientOfIsRead) {
  for (const std::string text : {"2,255,0;0,100", "1,255,0", " 3, 255, 90%;0, 10;", "", "plain"}) {
    const auto tracks = ReadWell("{\"gradient_color\": \"" + text + "\"}");
    EXPECT_EQ(tracks.ValueAt("gradient_color", 0), HostValue(text));
  }
}

TEST_F(KeyframeFile, DamagedKeysAreRefused) {
  EXPECT_THAT(ErrorOfBoth(R"({"gain": []})"), HasSubstr("has no keys"));
  EXPECT_THAT(ErrorOfBoth(R"({"gain": [[1]]})"), HasSubstr("/gain/0: a key is an object"));
  EXPECT_THAT(ErrorOfBoth(R"({"gain": [{"value": 1}]})"), HasSubstr("either \"time\""));
  EXPECT_THAT(ErrorOfBoth(R"({"gain": [{"time": 0, "frame": 0, "value": 1}]})"),
              HasSubstr("either \"time\""));
  EXPECT_THAT(ErrorOfBoth(R"({"gain": [{"time": 0}]})"), HasSubstr("no \"value\""));
  EXPECT_THAT(ErrorOfBoth(R"({"gain": [{"time": -1, "value": 1}]})"),
              HasSubstr("/gain/0/time: give seconds from the clip's start, 0 or more, not -1"));
  EXPECT_THAT(ErrorOfBoth(R"({"gain": [{"time": "1", "value": 1}]})"), HasSubstr("not \"1\""));
  EXPECT_THAT(ErrorOfBoth(R"({"gain": [{"time": 1e10, "value": 1}]})"), HasSubstr("give seconds"));
  EXPECT_THAT(ErrorOfBoth(R"({"gain": [{"frame": 0.5, "value": 1}]})"),
              HasSubstr("/gain/0/frame: give a frame's number, whole"));
  EXPECT_THAT(ErrorOfBoth(R"({"gain": [{"time": 0, "value": 1, "to": "ease"}]})"),
              HasSubstr(R"(/gain/0/to: give "linear", "hold" or "smooth", not "ease")"));
  EXPECT_THAT(ErrorOfBoth(R"({"gain": [{"time": 0, "valeu": 1, "value": 1}]})"),
              HasSubstr("/gain/0/valeu: a key has nothing of this name; did you mean \"value\"?"));
}

TEST_F(KeyframeFile, KeysThatGoBackInTimeAreRefused) {
  EXPECT_EQ(ErrorOf("{\"gain\": [\n{\"time\": 1, \"value\": 1},\n{\"frame\": 9, \"value\": 1}]}"),
            "3: error: /gain/1: is earlier than the key in front of it; put the keys in order of "
            "time");
}

TEST_F(KeyframeFile, DamagedStopsAreRefused) {
  const auto stops = [](const std::string& list) { return "{\"gradient\": [" + list + "]}"; };
  const std::string good = R"({"color": 0, "position": 10}, )";
  EXPECT_THAT(ErrorOfBoth(stops(R"({"color": 0, "position": 10})")), HasSubstr("2 to 4096 stops"));
  EXPECT_THAT(ErrorOfBoth(stops(good + "7")), HasSubstr("/gradient/1: a stop is an object"));
  EXPECT_THAT(ErrorOfBoth(stops(good + R"({"color": 0})")), HasSubstr("no \"position\""));
  EXPECT_THAT(
      ErrorOfBoth(stops(good + R"({"color": "red", "position": 20})")),
      HasSubstr("/gradient/1/color: give a colour as \"#RRGGBB\" or a number, not \"red\""));
  EXPECT_THAT(ErrorOfBoth(stops(good + R"({"color": 0, "position": 101})")),
              HasSubstr("/gradient/1/position: give a percentage from 0 to 100, not 101"));
  EXPECT_THAT(ErrorOfBoth(stops(good + R"({"color": 0, "position": 20, "colour": 1})")),
              HasSubstr("/gradient/1/colour: a stop has nothing of this name"));
  EXPECT_THAT(ErrorOf(stops(good + R"({"color": 0, "position": 9})")),
              HasSubstr("/gradient/1/position: is less than that of the stop in front of it"));
}

TEST_F(KeyframeFile, FilesThatAreNoObjectAreRefused) {
  EXPECT_THAT(ErrorOfBoth("[]"), HasSubstr("the file is an object of parameters, not an array"));
  EXPECT_THAT(ErrorOf("{\n\"gain\" 1}"), StartsWith("2:8: error: not valid JSON: "));
  EXPECT_THAT(ErrorOf("{\n\"gain\": 1,\n\"gain\": 1}"),
              StartsWith("3: error: /gain: the key stands"));
  EXPECT_EQ(ErrorOf("{\n\"gain\":\n1e400}"),
            "3: error: not valid JSON: number overflow parsing '1e400'");
}

TEST_F(KeyframeFile, AFileThatIsNotThereIsSaidToBeMissing) {
  EXPECT_FALSE(ReadKeyframes(folder_.path() / "missing.json", Effect(), kRate, &findings_));
  EXPECT_THAT(Messages(), ElementsAre(EndsWith("missing.json: error: there is no such file")));
}

TEST_F(KeyframeFile, WhatIsWrittenIsReadAgain) {
  const auto tracks = ReadWell(R"({
    "count": 7, "color": "#00ff80", "mirror": [{"frame": 100000, "value": false},
    {"time": 1e6, "value": true}], "gain": [{"time": 0.1, "value": 0.1, "to": "smooth"},
    {"time": 0.3, "value": 1.5, "to": "hold"}],
    "gradient": [{"time": 0, "value": "a \"text\"\n"}, {"time": 1, "value": "2,255,0;1,33.3"}]})");
  const std::string text = KeyframeText(tracks);
  const auto again = ReadWell(text);
  ASSERT_EQ(again.tracks().size(), tracks.tracks().size());
  for (const auto& [name, track] : tracks.tracks()) {
    EXPECT_EQ(again.tracks().at(name).keys(), track.keys()) << name << " in " << text;
  }
  EXPECT_EQ(KeyframeText(again), text);
}

TEST_F(KeyframeFile, WhatIsWrittenIsMadeForPeople) {
  ParameterTracks tracks;
  tracks.Set("count", Track(kKindInt, {{{}, 7}}, kRate));
  tracks.Set("gradient", Track(kKindText,
                               {{{0, KeyTime::Unit::kFrames}, std::string("2,16711680,0;255,100")},
                                {{1.5, KeyTime::Unit::kSeconds}, std::string("none"), Way::kHold}},
                               kRate));
  EXPECT_EQ(KeyframeText(tracks), R"({
  "count": 7,
  "gradient": [
    {"frame": 0, "value": [{"color": "#FF0000", "position": 0}, {"color": "#0000FF", "position": 100}]},
    {"time": 1.5, "value": "none", "to": "hold"}
  ]
}
)");
}

TEST_F(KeyframeFile, RemarksAreWrittenAsTheyStood) {
  const std::string text = R"({
  "$schema": "../params.schema.json",
  "$comment": {"by":  [1.0, 1e3, "\u00e9\/", "}"]},
  "color": "#FF8000",
  "$gain": "up, then\n down",
  "gain": [
    {"frame": 0, "value": 0, "to": "hold", "$comment": "the first beat", "$n":1.50},
    {"time": 1.5, "value": 1}
  ],
  "mirror": [
    {"time": 0.5, "value": true, "$comment": "alone"}
  ],
  "$end": null
}
)";
  EXPECT_EQ(KeyframeText(ReadWell(text)), text);
}

TEST_F(KeyframeFile, RemarksStayInFrontOfTheirParameters) {
  auto tracks = ReadWell(R"({"$first": 1, "mirror": true, "$of count": 2, "count": 7,
                             "$of gain": 3, "gain": 1, "$last": 4})");
  EXPECT_EQ(KeyframeText(tracks),
            "{\n  \"$first\": 1,\n  \"$of count\": 2,\n  \"count\": 7,\n  \"$of gain\": 3,\n"
            "  \"gain\": 1,\n  \"mirror\": true,\n  \"$last\": 4\n}\n");
  tracks.Remove("count");
  EXPECT_EQ(KeyframeText(tracks),
            "{\n  \"$first\": 1,\n  \"$of gain\": 3,\n  \"gain\": 1,\n  \"mirror\": true,\n"
            "  \"$of count\": 2,\n  \"$last\": 4\n}\n");
}

TEST_F(KeyframeFile, RemarksAloneAreWrittenToo) {
  EXPECT_EQ(KeyframeText(ReadWell("\xEF\xBB\xBF{\"\\u0024schema\":\"a\"}")),
            "{\n  \"\\u0024schema\":\"a\"\n}\n");
}

TEST_F(KeyframeFile, AnEmptySetIsWrittenAsAnEmptyFile) {
  EXPECT_TRUE(ReadWell(KeyframeText(ParameterTracks())).tracks().empty());
}

}  // namespace
}  // namespace krv::tool
