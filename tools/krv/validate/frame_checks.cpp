// Frames of every size, type and form.
#include <glad/gl.h>

#include <algorithm>
#include <string>

#include "validate/bench.h"
#include "validate/checks.h"
#include "validate/trial.h"

namespace krv::tool {
namespace {

struct Size {
  int32_t width;
  int32_t height;
};

constexpr Size kSmallSizes[] = {{1, 1}, {1, 7},   {7, 1},     {2, 3},   {3, 2},    {17, 16},
                                {5, 9}, {64, 48}, {321, 200}, {853, 2}, {3, 1080}, {500, 500}};
constexpr Size kMediumSizes[] = {{640, 360}, {480, 853}, {1920, 1080}, {4096, 1}, {1, 4096}};
constexpr Size kLargeSizes[] = {{3840, 2160}, {8192, 1}, {1, 8192}, {4097, 4095}, {8192, 8192}};

constexpr int32_t kTypes[] = {kPixel8, kPixel16, kPixelFloat};

std::string Text(const PictureShape& shape) {
  static constexpr const char* kNames[] = {"8 bits", "16 bits", "floats"};
  return std::to_string(shape.width) + " x " + std::to_string(shape.height) + ", " +
         kNames[shape.pixel_type] + (shape.padding > 0 ? ", padding " : "") +
         (shape.padding > 0 ? std::to_string(shape.padding) : "");
}

void RenderSizes(Bench& bench, Trial& trial, std::span<const Size> sizes) {
  for (const Size& size : sizes) {
    FrameCase frame;
    frame.SetShape({.width = size.width, .height = size.height});
    bench.examiner().Step("a frame of \"" + trial.name() + "\", " + Text(frame.output));
    trial.Render(frame);
  }
}

}  // namespace

void CheckFirstFrame(Bench& bench) {
  bench.Prepare();
  Trial trial(&bench, bench.first_effect().unique_name);
  bench.examiner().Step("slot 1");
  if (!trial.Initialise()) return;
  bench.examiner().Step("a frame");
  trial.Render({});
  bench.examiner().Step("slot 7");
  trial.Release();
}

void CheckEveryEffect(Bench& bench) {
  bench.Prepare();
  for (const host::EffectListing& effect : bench.effects()) {
    bench.examiner().Step("a life of \"" + effect.unique_name + "\"");
    Trial trial(&bench, effect.unique_name);
    if (!trial.Initialise()) continue;
    trial.Render({});
    trial.Release();
  }
}

void CheckSizes(Bench& bench) {
  bench.Prepare();
  ForChosenEffects(bench, [&](Trial& trial) {
    RenderSizes(bench, trial, kSmallSizes);
    if (bench.Has(kThorough)) RenderSizes(bench, trial, kMediumSizes);
  });
}

void CheckLargeSizes(Bench& bench) {
  bench.Prepare();
  Trial trial(&bench, bench.first_effect().unique_name);
  if (!trial.Initialise()) return;
  RenderSizes(bench, trial, kLargeSizes);
  FrameCase frame;
  for (const int32_t type : {kPixel16, kPixelFloat}) {
    frame.SetShape({.width = 4096, .height = 4096, .pixel_type = type});
    bench.examiner().Step("a frame, " + Text(frame.output));
    trial.Render(frame);
  }
  bench.examiner().Step("a small frame after large ones");
  trial.Render({});
  trial.Release();
}

void CheckSizesBeyondOpenGl(Bench& bench) {
  bench.Prepare();
  GLint largest = 0;
  glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
  Trial trial(&bench, bench.first_effect().unique_name);
  bench.examiner().Step("slot 1 and a frame");
  if (!trial.Initialise()) return;
  const auto before = trial.Render({});
  for (const Size& size : {Size{largest + 1, 1}, Size{1, largest + 1}}) {
    FrameCase frame;
    frame.SetShape({.width = size.width, .height = size.height});
    frame.codes = {kFailed, kOk};
    bench.examiner().Step("a frame larger than OpenGL's textures, " + Text(frame.output));
    // What OpenGL says about such a texture is its answer, not an error of the plug-in's.
    GuardedPicture picture(frame.output);
    picture.FillRows(0xA5);
    host::MemoryFrame host_frame(picture.Description(), picture.pixels());
    ScriptedContext context;
    context.input = context.output = &host_frame;
    bench.examiner().Call("slot 3", [&] { return trial.effect().ClearInputs(); });
    const int32_t code =
        bench.examiner().Call("slot 4", [&] { return trial.effect().ProcessFrame(&context); });
    bench.examiner().ExpectCode("slot 4", code, {kOk, kFailed});
    bench.examiner().Expect(picture.GuardsAreWhole(), "nothing written beside the rows",
                            "changed bytes there");
    bench.examiner().Expect(code == kOk || picture.RowsHold(0xA5),
                            "an output untouched by a failing frame", "changed pixels");
  }
  bench.examiner().Step("a frame afterwards");
  bench.examiner().Expect(trial.Render({}) == before, "the picture of before", "another");
  trial.Release();
}

void CheckPixelTypes(Bench& bench) {
  bench.Prepare();
  ForChosenEffects(bench, [&](Trial& trial) {
    for (const int32_t input : kTypes) {
      for (const int32_t output : kTypes) {
        FrameCase frame;
        frame.input.pixel_type = input;
        frame.output.pixel_type = output;
        bench.examiner().Step("a frame of \"" + trial.name() + "\", " + Text(frame.input) + " to " +
                              Text(frame.output));
        trial.Render(frame);
      }
    }
  });
}

void CheckStrides(Bench& bench) {
  constexpr int32_t kPaddings[] = {0, 1, 3, 4, 64, 1000};
  bench.Prepare();
  ForChosenEffects(bench, [&](Trial& trial) {
    for (const int32_t type : kTypes) {
      std::optional<Rows> tight;
      for (const int32_t padding : kPaddings) {
        FrameCase frame;
        frame.input = {.width = 33, .height = 17, .pixel_type = type, .padding = padding};
        frame.output = frame.input;
        frame.output.padding = 2 * padding;
        bench.examiner().Step("a frame of \"" + trial.name() + "\", " + Text(frame.output));
        const auto picture = trial.Render(frame);
        if (padding == 0) tight = picture;
        bench.examiner().Expect(picture == tight, "the picture of rows without padding", "another");
      }
    }
  });
}

void CheckChangingSizes(Bench& bench) {
  const int frames = bench.Has(kThorough) ? 60 : 12;
  bench.Prepare();
  ForChosenEffects(bench, [&](Trial& trial) {
    for (int i = 0; i < frames; ++i) {
      FrameCase frame;
      frame.SetShape({.width = 1 + i * 37 % 97,
                      .height = 1 + i * 53 % 89,
                      .pixel_type = kTypes[i % 3],
                      .padding = i % 5});
      frame.index = i;
      bench.examiner().Step("a frame of \"" + trial.name() + "\" after other sizes, " +
                            Text(frame.output));
      const auto picture = trial.RenderOnce(frame);
      bench.examiner().Expect(trial.RenderOnce(frame) == picture,
                              "the same picture for the same frame", "another");
    }
  });
}

void CheckOtherInputSizes(Bench& bench) {
  bench.Prepare();
  ForChosenEffects(bench, [&](Trial& trial) {
    for (const Size& size : {Size{1, 1}, Size{200, 10}, Size{3, 400}}) {
      FrameCase frame;
      frame.input = {.width = size.width, .height = size.height};
      frame.codes = {kOk, kFailed};
      bench.examiner().Step("a frame of \"" + trial.name() + "\" with an input of " +
                            Text(frame.input));
      trial.Render(frame);
    }
    FrameCase frame;
    frame.has_input = false;
    frame.codes = {kOk, kFailed};
    bench.examiner().Step("a frame of \"" + trial.name() + "\" without an input frame");
    trial.Render(frame);
  });
}

void CheckTextures(Bench& bench) {
  bench.Prepare({.device_apis = {kDeviceOpenGl}});
  ForChosenEffects(bench, [&](Trial& trial) {
    for (const int32_t type : kTypes) {
      for (const Size& size : {Size{64, 48}, Size{1, 1}, Size{1000, 600}}) {
        FrameCase frame;
        frame.on_gpu = true;
        frame.SetShape({.width = size.width, .height = size.height, .pixel_type = type});
        bench.examiner().Step("a frame of \"" + trial.name() + "\" in textures, " +
                              Text(frame.output));
        trial.Render(frame);
      }
    }
    bench.examiner().Step("a frame of \"" + trial.name() + "\" in memory on a host with textures");
    trial.Render({});
  });
}

void CheckFramesInPlace(Bench& bench) {
  bench.Prepare();
  const auto look = [&](Trial& trial, bool on_gpu) {
    FrameCase frame;
    frame.on_gpu = on_gpu;
    const std::string where = on_gpu ? " in a texture" : " in memory";
    bench.examiner().Step("a frame of \"" + trial.name() + "\"" + where);
    const auto apart = trial.Render(frame);
    frame.in_place = true;
    bench.examiner().Step("a frame of \"" + trial.name() + "\" over its own input" + where);
    bench.examiner().Expect(trial.Render(frame) == apart, "the picture of frames apart", "another");
  };
  ForChosenEffects(bench, [&](Trial& trial) { look(trial, false); });
  bench.Start({.device_apis = {kDeviceOpenGl}});
  ForChosenEffects(bench, [&](Trial& trial) { look(trial, true); });
}

void CheckFrameOrder(Bench& bench) {
  constexpr int64_t kFrames = 12;
  bench.Prepare();
  ForChosenEffects(bench, [&](Trial& trial) {
    std::vector<std::optional<Rows>> forward;
    FrameCase frame;
    bench.examiner().Step("frames of \"" + trial.name() + "\" forward");
    for (frame.index = 0; frame.index < kFrames; ++frame.index) {
      forward.push_back(trial.RenderOnce(frame));
    }
    bench.examiner().Step("the same frames of \"" + trial.name() + "\" backward");
    for (frame.index = kFrames - 1; frame.index >= 0; --frame.index) {
      bench.examiner().Expect(trial.RenderOnce(frame) == forward[static_cast<size_t>(frame.index)],
                              "the same picture", "another");
    }
  });
}

}  // namespace krv::tool
