// From the host's parameter values to uniforms.
#include <gtest/gtest.h>

#include "effects/effect_fixture.h"

namespace krv::test {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::Pair;

constexpr char kFloatV[] = "uniform float v;";
constexpr char kIntV[] = "uniform int v;";
constexpr char kFloatExpression[] = "vec4(v, 0.0, 0.0, 1.0)";
constexpr char kIntExpression[] = "vec4(float(v), 0.0, 0.0, 1.0)";

class Parameters : public EffectTest {
 protected:
  // What a uniform `v` holds that is declared as `kind` with the default 1, by the host's answer.
  float Received(int kind, const ParameterValue& answer) {
    context_.answers["v"] = answer;
    const bool is_float = kind == kKindFloat;
    return ValueOf(is_float ? kFloatExpression : kIntExpression, is_float ? kFloatV : kIntV,
                   {Param("v", kind, 1)})[0];
  }
};

TEST_F(Parameters, DeclaredDefaultsReachTheShader) {
  EXPECT_EQ(ValueOf("vec4(float(i), float(n), f, float(b))",
                    "uniform int i; uniform int n; uniform float f; uniform bool b;",
                    {Param("i", kKindInt, -7), Param("n", kKindIntInternal, 9),
                     Param("f", kKindFloat, 0.375), Param("b", kKindBool, true)}),
            (Values{-7, 9, 0.375, 1}));
}

TEST_F(Parameters, AnswersTakeThePlaceOfDefaults) {
  EXPECT_EQ(Received(kKindInt, Int(123456)), 123456);
  EXPECT_EQ(Received(kKindIntInternal, Int(-3)), -3);
  EXPECT_EQ(Received(kKindFloat, Float(0.625F)), 0.625F);
  EXPECT_EQ(Received(kKindBool, Bool(0)), 0);
  EXPECT_EQ(Received(kKindColor, Int(77)), 77);
  EXPECT_EQ(Received(kKindColor, Colour(78)), 78);
}

TEST_F(Parameters, AnswersOfOtherKindsAreConverted) {
  EXPECT_EQ(Received(kKindInt, Float(2.75F)), 2);
  EXPECT_EQ(Received(kKindInt, Double(-2.75)), -2);
  EXPECT_EQ(Received(kKindInt, Bool(1)), 1);
  EXPECT_EQ(Received(kKindFloat, Int(3)), 3);
  EXPECT_EQ(Received(kKindFloat, Double(0.5)), 0.5);
  EXPECT_EQ(Received(kKindFloat, Bool(1)), 1);
  EXPECT_EQ(Received(kKindBool, Int(5)), 1);
  EXPECT_EQ(Received(kKindBool, Float(0)), 0);
}

TEST_F(Parameters, AnsweredTextForANumberIsIgnored) {
  EXPECT_EQ(Received(kKindInt, Text("5")), 1);
  EXPECT_EQ(Received(kKindFloat, Text("5")), 1);
  EXPECT_EQ(Received(kKindBool, Text("0")), 1);
}

TEST_F(Parameters, RefusedAnswerLeavesTheDeclaredDefault) {
  context_.refusals["v"] = Float(99);
  EXPECT_EQ(ValueOf(kFloatExpression, kFloatV, {Param("v", kKindFloat, 0.5)})[0], 0.5F);
}

TEST_F(Parameters, DoublesDoNotReachTheShader) {
  context_.answers["v"] = Double(5);
  EXPECT_EQ(ValueOf(kFloatExpression, kFloatV, {Param("v", kKindDouble, 5)})[0], 0);
}

TEST_F(Parameters, AnswerForAParameterWithoutADefaultIsTakenAsItIs) {
  context_.answers["v"] = Float(0.25F);
  const json without_default = {{"name", "v"}, {"type", kKindFloat}};
  EXPECT_EQ(ValueOf(kFloatExpression, kFloatV, {without_default})[0], 0.25F);
}

TEST_F(Parameters, AreAskedForInOrderOfDeclarationAtTheFrameIndex) {
  context_.index = -12;
  ValueOf("vec4(1.0)", "",
          {Param("z", kKindInt, 1), Param("a", kKindText, ""), Param("color", kKindColor, 1),
           Param("a", kKindFloat, 1)});
  EXPECT_THAT(context_.asked,
              ElementsAre(Pair("z", -12), Pair("a", -12), Pair("color", -12), Pair("a", -12)));
}

TEST_F(Parameters, FollowTheFrame) {
  Package package = ValuePackage(kFloatExpression, kFloatV);
  package.description["params"] = {Param("v", kKindFloat, 0.5)};
  const Instance effect = host_.Make(package);
  EXPECT_EQ(Shown(*effect)[0], 0.5F);
  context_.answers["v"] = Float(0.25F);
  EXPECT_EQ(Shown(*effect)[0], 0.25F);
  context_.answers.clear();
  EXPECT_EQ(Shown(*effect)[0], 0.5F);
}

TEST_F(Parameters, ComeAfterTheUniformsOfTheFrame) {
  context_.index = 25;
  EXPECT_EQ(ValueOf("vec4(time_second)", "uniform float time_second;",
                    {Param("time_second", kKindFloat, 0.5)})[0],
            0.5F);
}

constexpr char kColor[] =
    "uniform float color_r; uniform float color_g; uniform float color_b; uniform int color;";
constexpr char kColorExpression[] = "vec4(color_r, color_g, color_b, float(color))";

TEST_F(Parameters, ColourIsSplitIntoItsChannels) {
  context_.answers["color"] = Int(16711680);
  EXPECT_EQ(ValueOf(kColorExpression, kColor, {Param("color", kKindColor, 0)}),
            (Values{1, 0, 0, 16711680}));
  context_.answers["color"] = Colour(0x123456);
  EXPECT_EQ(
      ValueOf(kColorExpression, kColor, {Param("color", kKindColor, 0)}),
      (Values{float(0x12 / 255.0), float(0x34 / 255.0), float(0x56 / 255.0), float(0x123456)}));
}

TEST_F(Parameters, BitsAboveTheColourDoNotCount) {
  context_.answers["color"] = Int(-1);
  EXPECT_EQ(ValueOf(kColorExpression, kColor, {Param("color", kKindColor, 0)}),
            (Values{1, 1, 1, -1}));
}

TEST_F(Parameters, ColourIsPackedWhateverKindThePackageDeclares) {
  for (const int kind : {int{kKindInt}, int{kKindIntInternal}, int{kKindFloat}}) {
    EXPECT_EQ(ValueOf(kColorExpression, kColor, {Param("color", kind, 65280)}),
              (Values{0, 1, 0, 65280}))
        << "kind " << kind;
  }
}

TEST_F(Parameters, OtherColoursAreNotSplit) {
  EXPECT_EQ(ValueOf("vec4(color_r, color_g, color_b, float(color2))",
                    "uniform float color_r; uniform float color_g; uniform float color_b; "
                    "uniform int color2;",
                    {Param("color2", kKindColor, 255)}),
            (Values{0, 0, 0, 255}));
}

// Three programs that each put `v` into a channel of their own.
Package WitnessPackage() {
  Package package = PassPackage({Fragment("gl_FragColor = vec4(v, 0.0, 0.0, 1.0);", kFloatV),
                                 Fragment("gl_FragColor = texture2D(background_tex, vec2(0.5)) + "
                                          "vec4(0.0, v, 0.0, 0.0);",
                                          "uniform sampler2D background_tex; uniform float v;")});
  package.description["blend_script"] = "blend.glsl";
  package.files["blend.glsl"] =
      Fragment("gl_FragColor = texture2D(effect_tex, vec2(0.5)) + vec4(0.0, 0.0, v, 0.0);",
               "uniform sampler2D effect_tex; uniform float v;");
  return package;
}

TEST_F(Parameters, ReachEveryPassAndTheBlend) {
  Package package = WitnessPackage();
  package.description["params"] = {Param("v", kKindFloat, 1)};
  EXPECT_EQ(Shown(*host_.Make(package)), (Values{1, 1, 1, 1}));
}

TEST_F(Parameters, SetUniformReachesEveryPassAndTheBlend) {
  const Instance effect = host_.Make(WitnessPackage());
  EXPECT_EQ(Shown(*effect), (Values{0, 0, 0, 1}));
  ParameterValue value = Float(1);
  EXPECT_EQ(effect->SetUniform("v", &value), kOk);
  EXPECT_EQ(Shown(*effect), (Values{1, 1, 1, 1}));
  value = Float(0);
  EXPECT_EQ(Shown(*effect), (Values{1, 1, 1, 1})) << "the value was not copied";
}

TEST_F(Parameters, SetUniformTakesEveryNumberAndIgnoresTheRest) {
  const Instance effect = host_.Make(ValuePackage(kIntExpression, kIntV));
  const auto shown_after = [&](const ParameterValue& value) {
    EXPECT_EQ(effect->SetUniform("v", &value), kOk);
    return Shown(*effect)[0];
  };
  EXPECT_EQ(shown_after(Int(5)), 5);
  EXPECT_EQ(shown_after(Bool(1)), 1);
  EXPECT_EQ(shown_after(Text("7")), 1);
  ParameterValue value = Int(8);
  value.kind = kKindIntInternal;
  EXPECT_EQ(shown_after(value), 8);
  EXPECT_EQ(effect->SetUniform("no_such_uniform", &value), kOk);
  EXPECT_EQ(Shown(*effect)[0], 8);
}

TEST_F(Parameters, SetUniformRefusesNullArguments) {
  const Instance effect = host_.Make(ValuePackage(kIntExpression, kIntV));
  const ParameterValue value = Int(1);
  EXPECT_EQ(effect->SetUniform(nullptr, &value), kFailed);
  EXPECT_EQ(effect->SetUniform("v", nullptr), kFailed);
}

TEST_F(Parameters, ApplyParametersAsksForThemAll) {
  Package package = ValuePackage(kIntExpression, kIntV);
  package.description["params"] = {Param("v", kKindInt, 1)};
  const Instance effect = host_.Make(package);
  context_.index = 3;
  EXPECT_EQ(effect->ApplyParameters(&context_), kOk);
  EXPECT_THAT(context_.asked, ElementsAre(Pair("v", 3)));
  EXPECT_EQ(effect->ApplyParameters(nullptr), kFailed);
}

}  // namespace
}  // namespace krv::test
