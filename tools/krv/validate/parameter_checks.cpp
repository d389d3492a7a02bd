// Parameter values at their limits, beyond them, and of kinds that they are not of.
#include <algorithm>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "validate/bench.h"
#include "validate/checks.h"
#include "validate/trial.h"

namespace krv::tool {
namespace {

using host::ParameterListing;

struct Answer {
  std::string what;
  ParameterValue value;
};

constexpr size_t kLongText = 1 << 20;  // bytes

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kHuge = std::numeric_limits<float>::max();

// Small, since there are thousands.
FrameCase FrameWith(const std::string& parameter, const ParameterValue& value) {
  FrameCase frame;
  frame.SetShape({.width = 24, .height = 16, .pixel_type = kPixelFloat});
  frame.answers[parameter] = value;
  return frame;
}

// A text for people: cut short, and without what is not ASCII.
std::string Shown(const std::string& text) {
  constexpr size_t kShown = 40;
  if (text.size() > kShown)
    return Shown(text.substr(0, 4)) + "... (" + std::to_string(text.size()) + " bytes)";
  std::string shown = text;
  std::replace_if(
      shown.begin(), shown.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
  return '"' + shown + '"';
}

int32_t Integer(double value) { return static_cast<int32_t>(value); }

std::vector<Answer> Limits(const ParameterListing& parameter) {
  switch (parameter.kind) {
    case kKindFloat:
      return {{"its smallest value", FloatRecord(static_cast<float>(parameter.minimum))},
              {"its largest value", FloatRecord(static_cast<float>(parameter.maximum))},
              {"its default", FloatRecord(static_cast<float>(parameter.default_number))}};
    case kKindInt:
    case kKindColor:
      return {{"its smallest value", IntRecord(Integer(parameter.minimum))},
              {"its largest value", IntRecord(Integer(parameter.maximum))},
              {"its default", IntRecord(Integer(parameter.default_number))}};
    case kKindBool:
      return {{"false", BoolRecord(0)}, {"true", BoolRecord(1)}};
    default:
      return {{"its default", TextRecord(parameter.default_text.c_str())}};
  }
}

std::vector<Answer> Outside(const ParameterListing& parameter) {
  switch (parameter.kind) {
    case kKindFloat:
      return {{"a value below its smallest",
               FloatRecord(static_cast<float>(parameter.minimum) - 1000.0F)},
              {"a value above its largest",
               FloatRecord(static_cast<float>(parameter.maximum) + 1000.0F)},
              {"the largest float", FloatRecord(kHuge)},
              {"the smallest float", FloatRecord(-kHuge)},
              {"the float next to 0", FloatRecord(std::numeric_limits<float>::denorm_min())},
              {"infinity", FloatRecord(kInfinity)},
              {"-infinity", FloatRecord(-kInfinity)},
              {"NaN", FloatRecord(kNan)}};
    case kKindInt:
    case kKindColor:
      return {{"INT32_MIN", IntRecord(INT32_MIN)},
              {"INT32_MAX", IntRecord(INT32_MAX)},
              {"-1", IntRecord(-1)},
              {"0", IntRecord(0)}};
    case kKindBool:
      return {{"the byte 255", BoolRecord(255)}};
    default:
      return {};
  }
}

// Of every kind, also of none that there is.
std::vector<Answer> EveryKind() {
  return {{"an integer", IntRecord(7)},
          {"an integer of kind 4", IntRecord(7, kKindIntInternal)},
          {"a colour", IntRecord(0xFFFFFF, kKindColor)},
          {"a float", FloatRecord(0.5F)},
          {"NaN", FloatRecord(kNan)},
          {"infinity", FloatRecord(kInfinity)},
          {"a double", DoubleRecord(0.5)},
          {"a double beyond all floats", DoubleRecord(1e300)},
          {"NaN as a double", DoubleRecord(std::numeric_limits<double>::quiet_NaN())},
          {"a boolean", BoolRecord(1)},
          {"a text", TextRecord("text")},
          {"a null in place of a text", TextRecord(nullptr)},
          {"kind 0", IntRecord(1, kKindNone)},
          {"kind 99", IntRecord(1, 99)},
          {"kind -1", IntRecord(1, -1)}};
}

// Texts for a parameter whose default may be a list of numbers.
std::vector<std::string> OddTexts(const std::string& usual) {
  return {"",
          ";",
          ",",
          "0",
          "-1,0,0",
          "2147483648,1,1",
          "99999999999999999999,1,1",
          "3,1",
          "3,,;,;",
          "nan,nan;inf,inf",
          "1e308,1e308",
          "%s%n%d",
          "\xff\xfe\x80",
          usual + ";",
          usual + usual,
          usual.substr(0, usual.size() / 2),
          std::string(kLongText, 'x'),
          std::string(kLongText, ';'),
          "3," + std::string(kLongText, '9')};
}

void RenderWith(Bench& bench, Trial& trial, const ParameterListing& parameter,
                const std::vector<Answer>& answers, const std::vector<int32_t>& codes) {
  for (const Answer& answer : answers) {
    bench.examiner().Step("a frame of \"" + trial.name() + "\" with " + answer.what + " for \"" +
                          parameter.name + "\"");
    FrameCase frame = FrameWith(parameter.name, answer.value);
    frame.codes = codes;
    trial.RenderOnce(frame);
  }
}

void ForParameters(Bench& bench, const std::function<void(Trial&, const ParameterListing&)>& look) {
  ForChosenEffects(bench, [&](Trial& trial) {
    FrameCase plain = FrameWith("", FloatRecord(0));
    bench.examiner().Step("a frame of \"" + trial.name() + "\" with its defaults");
    const auto before = trial.Render(plain);
    for (const host::EffectListing& effect : bench.effects()) {
      if (effect.unique_name != trial.name()) continue;
      for (const ParameterListing& parameter : effect.parameters) look(trial, parameter);
    }
    bench.examiner().Step("a frame of \"" + trial.name() + "\" with its defaults again");
    bench.examiner().Expect(trial.Render(plain) == before, "the picture of before", "another");
  });
}

}  // namespace

void CheckParameterLimits(Bench& bench) {
  bench.Prepare();
  ForParameters(bench, [&](Trial& trial, const ParameterListing& parameter) {
    RenderWith(bench, trial, parameter, Limits(parameter), {kOk});
  });
}

void CheckParametersOutside(Bench& bench) {
  bench.Prepare();
  ForParameters(bench, [&](Trial& trial, const ParameterListing& parameter) {
    RenderWith(bench, trial, parameter, Outside(parameter), {kOk, kFailed});
  });
}

void CheckParameterKinds(Bench& bench) {
  bench.Prepare();
  ForParameters(bench, [&](Trial& trial, const ParameterListing& parameter) {
    RenderWith(bench, trial, parameter, EveryKind(), {kOk, kFailed});
  });
}

void CheckParameterTexts(Bench& bench) {
  bench.Prepare();
  ForParameters(bench, [&](Trial& trial, const ParameterListing& parameter) {
    if (parameter.kind != kKindText) return;
    const std::vector<std::string> texts = OddTexts(parameter.default_text);
    std::vector<Answer> answers;
    answers.reserve(texts.size());
    for (const std::string& text : texts) {
      answers.push_back({"the text " + Shown(text), TextRecord(text.c_str())});
    }
    RenderWith(bench, trial, parameter, answers, {kOk, kFailed});
  });
}

void CheckParameterRefusals(Bench& bench) {
  bench.Prepare();
  ForChosenEffects(bench, [&](Trial& trial) {
    FrameCase frame;
    bench.examiner().Step("a frame of \"" + trial.name() + "\" with its defaults");
    const auto before = trial.Render(frame);
    for (const Answer& answer : EveryKind()) {
      bench.examiner().Step("a frame of \"" + trial.name() +
                            "\" whose parameters are refused with " + answer.what + " left behind");
      frame.refusal = &answer.value;
      frame.codes = {kOk, kFailed};
      trial.RenderOnce(frame);
    }
    frame.refusal = nullptr;
    bench.examiner().Step("a frame of \"" + trial.name() + "\" with its defaults again");
    bench.examiner().Expect(trial.Render(frame) == before, "the picture of before", "another");
  });
}

void CheckUniforms(Bench& bench) {
  bench.Prepare();
  ForChosenEffects(bench, [&](Trial& trial) {
    const std::string long_name(kLongText, 'x');
    for (const char* name :
         {"", "intensity", "iResolution", "time_second", "background_tex", "gl_FragCoord",
          "no such name", "\xff\xfe", "%s%n", long_name.c_str()}) {
      for (const Answer& answer : EveryKind()) {
        bench.examiner().Step("slot 11 of \"" + trial.name() + "\", " + Shown(name) + ", " +
                              answer.what);
        const int32_t code =
            trial.Watch("slot 11", [&] { return trial.effect().SetUniform(name, &answer.value); });
        bench.examiner().ExpectCode("slot 11", code, {kOk, kFailed});
      }
      FrameCase frame;
      frame.codes = {kOk, kFailed};
      trial.RenderOnce(frame);
    }
    bench.examiner().Step("a life of \"" + trial.name() + "\" after odd uniforms");
    trial.Release();
    if (trial.Initialise()) trial.Render({});
  });
}

}  // namespace krv::tool
