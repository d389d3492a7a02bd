// The two ways in which an effect gets over a frame in memory: on the CPU, and with the blend
// program on the GPU. They have to give the same pictures.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "effects/effect_fixture.h"
#include "effects/shipped_package.h"
#include "effects/test_mask.h"
#include "shaders/builtin_shaders.h"

namespace krv::test {
namespace {

// The package with the default blend as a script of its own, which is left to the GPU. One that has
// a script is left to it anyway.
Package LeftToTheGpu(Package package) {
  if (package.description.contains("blend_script")) return package;
  package.description["blend_script"] = "default_blend.glsl";
  package.files["default_blend.glsl"] = std::string(DefaultBlendShader());
  if (package.description.contains("unique_name")) {
    auto& unique_name = package.description["unique_name"];
    unique_name = unique_name.get<std::string>() + "_on_the_gpu";
  }
  return package;
}

struct FrameShape {
  int32_t width;
  int32_t height;
  int32_t pixel_type;
  int32_t padding;  // bytes behind each row
};

int32_t PixelBytes(int32_t pixel_type) {
  return pixel_type == kPixel8 ? 4 : pixel_type == kPixel16 ? 8 : 16;
}

host::MemoryFrame NewFrame(const FrameShape& shape) {
  const int32_t stride = shape.width * PixelBytes(shape.pixel_type) + shape.padding;
  return {shape.width, shape.height, shape.pixel_type, stride};
}

// Channel values of a row, 0 to 1 for full scale.
double ChannelAt(host::MemoryFrame& frame, const FrameShape& shape, int32_t y, int32_t channel) {
  const auto* row = static_cast<const uint8_t*>(frame.GetPixels()) +
                    ptrdiff_t{y} * (shape.width * PixelBytes(shape.pixel_type) + shape.padding);
  if (shape.pixel_type == kPixel8) return row[channel] / 255.0;
  if (shape.pixel_type == kPixel16) {
    uint16_t value = 0;
    std::memcpy(&value, row + 2 * ptrdiff_t{channel}, sizeof(value));
    return value / 65535.0;
  }
  float value = 0;
  std::memcpy(&value, row + 4 * ptrdiff_t{channel}, sizeof(value));
  return double{value};
}

double LargestDifference(host::MemoryFrame& a, host::MemoryFrame& b, const FrameShape& shape) {
  double largest = 0;
  for (int32_t y = 0; y < shape.height; ++y) {
    for (int32_t channel = 0; channel < shape.width * 4; ++channel) {
      largest = std::max(
          largest, std::abs(ChannelAt(a, shape, y, channel) - ChannelAt(b, shape, y, channel)));
    }
  }
  return largest;
}

// Makes a frame of random bytes, which for floats are numbers between 0 and 1.
void FillRandomly(host::MemoryFrame& frame, const FrameShape& shape) {
  uint32_t state = 9;
  const auto next = [&state] { return (state = state * 1664525 + 1013904223) >> 8; };
  for (int32_t y = 0; y < shape.height; ++y) {
    auto* row = static_cast<uint8_t*>(frame.GetPixels()) +
                ptrdiff_t{y} * (shape.width * PixelBytes(shape.pixel_type) + shape.padding);
    for (int32_t channel = 0; channel < shape.width * 4; ++channel) {
      if (shape.pixel_type == kPixel8) {
        row[channel] = static_cast<uint8_t>(next());
      } else if (shape.pixel_type == kPixel16) {
        const auto value = static_cast<uint16_t>(next());
        std::memcpy(row + 2 * ptrdiff_t{channel}, &value, sizeof(value));
      } else {
        const float value = static_cast<float>(next()) / 16777216.0F;
        std::memcpy(row + 4 * ptrdiff_t{channel}, &value, sizeof(value));
      }
    }
  }
}

class CompositorTest : public EffectTest {
 protected:
  // The largest difference between the two pictures of a package, as a share of full scale.
  double Difference(const Package& package, const FrameShape& shape) {
    const Instance on_cpu = host_.Make(package);
    const Instance on_gpu = host_.Make(LeftToTheGpu(package));
    return Difference(*on_cpu, *on_gpu, shape);
  }

  // The same of the next frames of two instances of it.
  double Difference(KRVEffect& on_cpu, KRVEffect& on_gpu, const FrameShape& shape) {
    host::MemoryFrame input = NewFrame(shape);
    FillRandomly(input, shape);
    host::MemoryFrame cpu_output = NewFrame(shape);
    host::MemoryFrame gpu_output = NewFrame(shape);
    context_.input = &input;
    context_.audio = &noise_.block;
    context_.person_mask = &person_;
    context_.index = 40;
    Render(on_cpu, &cpu_output);
    Render(on_gpu, &gpu_output);
    return LargestDifference(cpu_output, gpu_output, shape);
  }

  void Render(KRVEffect& effect, host::MemoryFrame* output) {
    context_.output = output;
    EXPECT_EQ(ProcessFrame(effect, context_), kOk);
  }

  FallingNoise noise_;
  TestMask person_{64, 36, {24, 6, 16, 30}};
};

class Compositors : public CompositorTest, public testing::WithParamInterface<std::string> {};

constexpr double kStep = 1.0 / 255;

TEST_P(Compositors, AgreeOnEveryPackageAtEveryPixelType) {
  Package package = ShippedPackage(GetParam());
  package.description["quality"] = "low";
  for (const FrameShape& shape :
       {FrameShape{640, 360, kPixel8, 0}, FrameShape{333, 517, kPixel8, 20},
        FrameShape{640, 360, kPixel16, 6}, FrameShape{640, 360, kPixelFloat, 4}}) {
    EXPECT_LE(Difference(package, shape), 1.001 * kStep) << shape.pixel_type << " " << shape.width;
  }
}

TEST_P(Compositors, AgreeOnEveryPackageWithoutScaling) {
  EXPECT_LE(Difference(ShippedPackage(GetParam()), {211, 119, kPixel8, 4}), 1.001 * kStep);
}

TEST_P(Compositors, AgreeOnEveryPackageWithoutBlending) {
  Package package = ShippedPackage(GetParam());
  package.description["quality"] = "low";
  package.description["without_blend"] = true;
  EXPECT_LE(Difference(package, {640, 360, kPixel8, 0}), 1.001 * kStep);
}

INSTANTIATE_TEST_SUITE_P(All, Compositors, testing::ValuesIn(ShippedPackageNames()),
                         [](const auto& test) { return test.param; });

// What a flat figure leaves transparent is not drawn where the default blend follows: as it is put
// about, no part of it may be lost.
TEST_F(CompositorTest, AgreeWhereverAFlatFigureIsPut) {
  const std::vector<std::map<std::string, ParameterValue>> places = {
      {{"position_x", Float(20)}, {"position_y", Float(80)}},
      {{"flip_x", Bool(1)}, {"position_x", Float(70)}, {"alpha", Float(30)}},
      {{"flip_y", Bool(1)}, {"position_y", Float(30)}, {"scale_x", Float(0.3F)}},
      {{"direction", Int(1)}, {"scale_y", Float(0.2F)}, {"offset_x", Float(0.37F)}},
      {{"direction", Int(1)}, {"scale_x", Float(-0.7F)}, {"scale_y", Float(-1.5F)}},
      {{"rotate_z", Int(40)}, {"scale_y", Float(0.2F)}},
      {{"rotate_x", Int(40)}, {"glow", Int(0)}},
      {{"glow", Int(1)}, {"scale_y", Float(0.1F)}},
      {{"intensity", Float(0)}, {"spectrum_minimum_height", Float(0)}}};
  for (const char* folder :
       {"bars", "points", "lines", "pulses", "circle_columns", "rectangle_columns"}) {
    Package package = ShippedPackage(folder);
    package.description["quality"] = "low";
    for (size_t i = 0; i < places.size(); ++i) {
      context_.answers = places[i];
      EXPECT_LE(Difference(package, {640, 400, kPixel8, 0}), 1.001 * kStep) << folder << " " << i;
    }
  }
}

// Nor may any part of large items: in a wide frame they reach far beyond what is seen around them.
TEST_F(CompositorTest, AgreeOnLargeItemsOfFlatFigures) {
  const std::vector<std::pair<std::string, std::map<std::string, ParameterValue>>> figures = {
      {"circle_columns", {{"circle_size", Float(4)}}},
      {"circle_columns", {{"circle_size", Float(3)}, {"audio_frequency_max", Float(0.05F)}}},
      {"rectangle_columns", {{"rectangle_height", Float(8)}}},
      {"rectangle_columns", {{"rectangle_height", Float(3)}, {"rectangle_width", Float(5)}}},
      {"bars", {{"spectrum_width", Float(5)}, {"spectrum_minimum_height", Float(40)}}},
      {"points", {{"point_size", Float(12)}}},
      {"lines", {{"line_width", Float(30)}}}};
  for (const auto& [folder, figure] : figures) {
    Package package = ShippedPackage(folder);
    package.description["quality"] = "low";
    const Instance on_cpu = host_.Make(package);
    const Instance on_gpu = host_.Make(LeftToTheGpu(package));
    for (const int direction : {0, 1}) {
      for (const int count : {6, 7}) {
        for (const float place : {35.0F, 43.0F, 50.0F, 58.0F}) {
          context_.answers = figure;
          context_.answers["direction"] = Int(direction);
          context_.answers["position_y"] = Float(place);
          for (const char* name : {"spectrum_count", "point_count", "line_count",
                                   "circle_column_count", "rectangle_column_count"}) {
            context_.answers[name] = Int(count);
          }
          EXPECT_LE(Difference(*on_cpu, *on_gpu, {480, 160, kPixel8, 0}), 1.001 * kStep)
              << folder << ", direction " << direction << ", " << count << " items at " << place;
        }
      }
    }
  }
}

// Nor may anything be left of the frame before.
TEST_F(CompositorTest, AgreeFrameAfterFrameAsAFlatFigureMoves) {
  Package package = ShippedPackage("bars");
  package.description["quality"] = "low";
  const Instance on_cpu = host_.Make(package);
  const Instance on_gpu = host_.Make(LeftToTheGpu(package));
  for (const auto& [place, scale] : {std::pair{50.0F, 1.0F}, std::pair{85.0F, 0.3F},
                                     std::pair{20.0F, 0.2F}, std::pair{300.0F, 0.2F}}) {
    context_.answers = {{"position_y", Float(place)}, {"scale_y", Float(scale)}};
    EXPECT_LE(Difference(*on_cpu, *on_gpu, {640, 400, kPixel8, 0}), 1.001 * kStep) << place;
  }
}

// A package's parameter stands in for what the frame says of a uniform of that name.
TEST_F(CompositorTest, AgreeOnParametersNamedAsWhatTheBlendReads) {
  for (const char* name : {"blend", "effect_tex", "background_tex"}) {
    for (const auto& [kind, value] :
         {std::pair{kKindBool, nlohmann::json(false)}, std::pair{kKindBool, nlohmann::json(true)},
          std::pair{kKindInt, nlohmann::json(0)}}) {
      Package package = ShippedPackage("bars");
      package.description["quality"] = "low";
      package.description["params"].push_back(Param(name, kind, value));
      EXPECT_LE(Difference(package, {640, 400, kPixel8, 0}), 1.001 * kStep) << name << " " << value;
    }
  }
}

// Declared or not: the host may set any uniform.
TEST_F(CompositorTest, AgreeOnWhatTheHostSetsOfTheBlendBetweenFrames) {
  Package package = ShippedPackage("bars");
  package.description["quality"] = "low";
  const Instance on_cpu = host_.Make(package);
  const Instance on_gpu = host_.Make(LeftToTheGpu(package));
  const FrameShape shape = {640, 400, kPixel8, 0};
  EXPECT_LE(Difference(*on_cpu, *on_gpu, shape), 1.001 * kStep);
  for (const auto& [name, value] :
       {std::pair{"blend", 0}, std::pair{"blend", 1}, std::pair{"effect_tex", 0}}) {
    const ParameterValue integer = Int(value);
    for (const auto& effect : {on_cpu.get(), on_gpu.get()}) effect->SetUniform(name, &integer);
    EXPECT_LE(Difference(*on_cpu, *on_gpu, shape), 1.001 * kStep) << name << " " << value;
  }
}

// Between two texels of the effect its edge takes as many pixels as the frame has for them.
TEST_F(CompositorTest, MakeTheEdgeOfAFigureNoSofterThanTheEffectSizeDoes) {
  const FrameShape shape = {3840, 2160, kPixel8, 0};
  const Package package = PassPackage({Fragment(
      "gl_FragColor = vec4(1.0, 1.0, 1.0, 0.9 * step(0.4, gl_FragCoord.x / iResolution.x));",
      "uniform vec2 iResolution;")});
  host::MemoryFrame black = NewFrame(shape);
  context_.input = &black;
  for (const Package& form : {package, LeftToTheGpu(package)}) {
    host::MemoryFrame output = NewFrame(shape);
    const Instance effect = host_.Make(form);
    Render(*effect, &output);
    const auto* row = static_cast<const uint8_t*>(output.GetPixels()) + ptrdiff_t{1000} * 3840 * 4;
    int between = 0;
    for (ptrdiff_t x = 0; x < 3840; ++x) between += row[4 * x] > 0 && row[4 * x] < 229 ? 1 : 0;
    EXPECT_GT(between, 0);
    EXPECT_LE(between, (3840 + 852) / 853);
  }
}

using OpaqueEffects = Compositors;

// Full alpha is added, anything below is mixed: the two ways have to see the same edge.
TEST_P(OpaqueEffects, AreAddedAtTheSamePixels) {
  const Package package = PassPackage({Fragment(GetParam(), "uniform vec2 iResolution;")});
  for (const FrameShape& shape :
       {FrameShape{211, 119, kPixel8, 0}, FrameShape{853, 480, kPixel8, 0},
        FrameShape{960, 540, kPixel8, 0}, FrameShape{1440, 1440, kPixel8, 0},
        FrameShape{1280, 720, kPixel16, 0}}) {
    EXPECT_LE(Difference(package, shape), 1.001 * kStep) << shape.width << " " << shape.pixel_type;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Figures, OpaqueEffects,
    testing::Values("vec2 at = gl_FragCoord.xy / iResolution; "
                    "gl_FragColor = vec4(0.2, 0.3, 0.1, step(0.3, at.x) * step(0.2, at.y));",
                    "vec2 cell = floor(gl_FragCoord.xy / 3.0); "
                    "gl_FragColor = vec4(0.1, 0.2, 0.3, mod(cell.x + cell.y, 2.0));"));

}  // namespace
}  // namespace krv::test
