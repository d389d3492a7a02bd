#include "checks.h"
#include "effect_context.h"
#include "frame.h"
#include "report.h"

namespace abi {
namespace {

constexpr int32_t kWidth = 64;
constexpr int32_t kHeight = 48;
constexpr int32_t kPixels = kWidth * kHeight;
constexpr Color kBackground = {40, 80, 120, 255};

// Eight white bars with gaps, which stand on a line below the frame: without sound nothing of them
// is in the picture.
constexpr ServedValue kServed[] = {
    {"spectrum_count", {.kind = kInt, .as_int = 8}},
    {"spectrum_width", {.kind = kFloat, .as_float = 4.0f}},
    {"spectrum_minimum_height", {.kind = kFloat, .as_float = 0.0f}},
    {"spectrum_round", {.kind = kFloat, .as_float = 0.0f}},
    {"position_y", {.kind = kFloat, .as_float = 45.0f}},
    {"scale_x", {.kind = kFloat, .as_float = 1.0f}},
    {"scale_y", {.kind = kFloat, .as_float = 1.0f}},
    {"single_color", {.kind = kInt, .as_int = 1}},
    {"color", {.kind = kColor, .as_int = 0xFFFFFF}},
    {"audio_db_min", {.kind = kFloat, .as_float = 50.0f}},
    {"audio_db_max", {.kind = kFloat, .as_float = 60.0f}},
};

struct PictureCount {
  int32_t background = 0;
  int32_t white = 0;
};

PictureCount Count(Frame& frame) {
  static Color picture[kPixels];
  frame.Read(picture);
  PictureCount count;
  for (const Color& color : picture) {
    if (color == kBackground) ++count.background;
    if (color.blue > 240 && color.green > 240 && color.red > 240) ++count.white;
  }
  return count;
}

void FillWithBackground(Frame& frame) {
  static Color picture[kPixels];
  for (Color& color : picture) color = kBackground;
  frame.Write(picture);
}

PictureCount Render(KRVEffect& effect, FrameContext& context, FrameForm form) {
  Frame input(kWidth, kHeight, form);
  Frame output(kWidth, kHeight, form);
  FillWithBackground(input);
  context.input = &input;
  context.output = &output;
  effect.ClearInputs();
  ExpectEqual(effect.ProcessFrame(&context), kOk, "KRVEffect::ProcessFrame");
  const PictureCount count = Count(output);
  effect.ClearInputs();
  ++context.index;
  return count;
}

void CheckPictures(KRVEffect& effect, FrameContext& context, FrameForm form) {
  static Sound sound;
  sound.FillWithNoise(0);
  context.audio = &sound;
  PictureCount count = Render(effect, context, form);
  ExpectEqual(count.background, kPixels, "a silent frame is the input frame");

  sound.FillWithNoise(30000);
  sound.rate_requests = 0;
  sound.start_requests = 0;
  count = Render(effect, context, form);
  Expect(count.white > kPixels / 10, "noise raises the bars");
  Expect(count.background > kPixels / 10, "the input frame shows through between the bars");
  ExpectEqual(sound.rate_requests, 1, "requests for the sample rate");
  ExpectEqual(sound.start_requests, 1, "requests for the start sample");

  context.audio = nullptr;
  count = Render(effect, context, form);
  ExpectEqual(count.background, kPixels, "a frame without sound is the input frame");
}

}  // namespace

void CheckBars(Host& host) {
  KRVEffect* effect = host.Create("audio_visualization_bars");
  if (effect == nullptr) return;
  static FrameContext context;
  // More than 32 bits.
  context.index = int64_t{5} << 40;
  context.values = kServed;
  context.value_count = sizeof(kServed) / sizeof(kServed[0]);
  if (ExpectEqual(effect->Initialize(&context), kOk, "KRVEffect::Initialize")) {
    CheckPictures(*effect, context, host.frame_form());
    ExpectEqual(effect->ReleaseResources(), kOk, "KRVEffect::ReleaseResources");
  }
  host.plugin.release(effect);
}

}  // namespace abi
