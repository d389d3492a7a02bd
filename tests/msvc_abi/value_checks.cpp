#include "checks.h"
#include "effect_context.h"
#include "frame.h"
#include "report.h"

namespace abi {
namespace {

constexpr int32_t kWidth = 16;
constexpr int32_t kHeight = 4;
constexpr int32_t kPadding = 12;

constexpr ServedValue kServed[] = {
    {"level", {.kind = kFloat, .as_float = 3.0f}},
    {"count", {.kind = kInt, .as_int = 200}},
    {"color", {.kind = kColor, .as_int = 0x6496C8}},
    {"on", {.kind = kBool, .as_byte = 0}},
    {"gradient_color", {.kind = kText, .as_text = "2,1193046,0;65280,100"}},
};

// What the package's shader shows in its first columns.
struct ValueColumn {
  const char* what;
  Color color;
};

constexpr ValueColumn kColumns[] = {
    {"a float reaches the shader", {191, 191, 191, 255}},     // 3 of 4
    {"an integer reaches the shader", {200, 200, 200, 255}},  // of 255
    {"a truth value reaches the shader", {51, 51, 51, 255}},  // off
    {"a colour reaches the shader", {0xC8, 0x96, 0x64, 255}},
    {"a text reaches the shader", {0x56, 0x34, 0x12, 255}},         // the gradient's first stop
    {"the frame's time reaches the shader", {122, 122, 122, 255}},  // 2.4 seconds of 5
    {"KRVEffect::SetUniform reaches the shader", {204, 204, 204, 255}},  // 0.8
};
constexpr int32_t kValueColumns = sizeof(kColumns) / sizeof(kColumns[0]);

constexpr const char* kAsked[] = {
    "level at 60: kind 5, 1.5",
    "count at 60: kind 3, 7",
    "color at 60: kind 15, 3368601",
    "on at 60: kind 7, 1",
    "gradient_color at 60: kind 8, 2,255,0;65280,100",
    "hidden_level at 60: kind 5, -0.5",
    "hidden_count at 60: kind 3, 3",
    "hidden_color at 60: kind 15, 128",
    "hidden_on at 60: kind 7, 0",
    "hidden_text at 60: kind 8, note",
    "internal at 60: kind 4, 40",
    "precise at 60: kind 6, 0.1",
    "undeclared at 60: kind 0",
};

Color InputColor(int32_t x, int32_t y) {
  return {static_cast<uint8_t>(10 * x), static_cast<uint8_t>(60 * y), static_cast<uint8_t>(x + y),
          255};
}

void WriteInput(Frame& frame) {
  Color picture[kWidth * kHeight];
  for (int32_t y = 0; y < kHeight; ++y) {
    for (int32_t x = 0; x < kWidth; ++x) picture[y * kWidth + x] = InputColor(x, y);
  }
  frame.Write(picture);
}

void CheckPicture(Frame& frame) {
  Color picture[kWidth * kHeight];
  frame.Read(picture);
  for (int32_t x = 0; x < kValueColumns; ++x) {
    bool as_served = true;
    for (int32_t y = 0; y < kHeight; ++y) {
      as_served = as_served && picture[y * kWidth + x] == kColumns[x].color;
    }
    Expect(as_served, kColumns[x].what);
  }
  bool shows_input = true;
  for (int32_t y = 0; y < kHeight; ++y) {
    for (int32_t x = kValueColumns; x < kWidth; ++x) {
      shows_input = shows_input && picture[y * kWidth + x] == InputColor(x, y);
    }
  }
  Expect(shows_input, "the input frame shows through where there are no values");
  Expect(frame.PaddingIsIntact(), "nothing is written between the rows of a frame");
}

void CheckParameters(KRVEffect& effect, FrameContext& context) {
  context.asked.Clear();
  effect.ApplyParameters(&context);
  ExpectLines(context.asked, kAsked, "EffectContext::GetParameterValue");
}

void CheckFrames(KRVEffect& effect, FrameContext& context, FrameForm form) {
  Frame input(kWidth, kHeight, form, kPadding);
  Frame output(kWidth, kHeight, form, kPadding);
  WriteInput(input);
  context.input = &input;
  context.output = &output;
  ExpectEqual(effect.ClearInputs(), kOk, "KRVEffect::ClearInputs");
  ExpectEqual(effect.ProcessFrame(&context), kOk, "KRVEffect::ProcessFrame");
  CheckPicture(output);

  // Over the input itself, which has to be read before it is drawn into.
  context.output = &input;
  effect.ClearInputs();
  ExpectEqual(effect.ProcessFrameAgain(&context), kOk, "KRVEffect::ProcessFrameAgain");
  CheckPicture(input);
  effect.ClearInputs();
}

}  // namespace

void CheckValues(Host& host) {
  KRVEffect* effect = host.Create("every_kind");
  if (effect == nullptr) return;
  static FrameContext context;
  context.index = 60;
  context.rate_numerator = 50;
  context.rate_denominator = 2;
  context.values = kServed;
  context.value_count = sizeof(kServed) / sizeof(kServed[0]);
  if (ExpectEqual(effect->Initialize(&context), kOk, "KRVEffect::Initialize")) {
    CheckParameters(*effect, context);
    const ParameterValue value{.kind = kFloat, .as_float = 0.8f};
    ExpectEqual(effect->SetUniform("from_set_uniform", &value), kOk, "KRVEffect::SetUniform");
    CheckFrames(*effect, context, host.frame_form());
    ExpectEqual(effect->ReleaseResources(), kOk, "KRVEffect::ReleaseResources");
  }
  delete effect;
}

}  // namespace abi
