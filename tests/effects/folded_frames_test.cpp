// The built-in shaders' folded form in frames: packages that name a shader of the catalogue, which
// is folded, beside packages that bring the same text as a file of their own, which is not.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "audio_block.h"
#include "effects/effect_fixture.h"
#include "shaders/builtin_shaders.h"

namespace krv::test {
namespace {

constexpr char kFlat[] = "audio_visualization_geometry.frag";
constexpr int kKinds = 6;

class FoldedFrames : public EffectTest {
 protected:
  FoldedFrames() {
    Fill(picture_, {60, 60, 60, 255});
    for (int i = 0; i < 800; ++i) {
      double sample = 0;
      for (int k = 1; k < 60; ++k) sample += std::sin(i * 0.003 * k * k) / k;
      samples_.insert(samples_.end(), 2, static_cast<int16_t>(sample * 4000));
    }
    context_.input = &picture_;
    audio_.emplace(host::FrameAudio{samples_.data(), 800, 2, 24000, 0});
    context_.audio = &*audio_;
  }

  static nlohmann::json Params() {
    return {Param("geometry_type", kKindInt, 0), Param("direction", kKindInt, 0),
            Param("spectrum_count", kKindInt, 24), Param("point_count", kKindInt, 24),
            Param("line_count", kKindInt, 24), Param("pulse_count", kKindInt, 12),
            Param("circle_column_count", kKindInt, 16),
            Param("rectangle_column_count", kKindInt, 16), Param("spectrum_width", kKindFloat, 1.2),
            Param("spectrum_minimum_height", kKindFloat, 2),
            Param("spectrum_round", kKindFloat, 0.5), Param("point_size", kKindFloat, 2),
            Param("line_width", kKindFloat, 1.5), Param("pulse_width", kKindFloat, 0.5),
            Param("pulse_line_width", kKindFloat, 1), Param("pulse_fill", kKindBool, true),
            Param("circle_size", kKindFloat, 0.8), Param("clrcle_gap_size", kKindFloat, 0.3),
            Param("rectangle_width", kKindFloat, 1), Param("rectangle_height", kKindFloat, 0.4),
            Param("rectangle_gap_size", kKindFloat, 0.2),
            // With no pixel's centre right between two items, where rounding decides whose it is.
            Param("scale_x", kKindFloat, 0.8713), Param("scale_y", kKindFloat, 0.7),
            Param("position_x", kKindFloat, 50), Param("position_y", kKindFloat, 46),
            Param("rotate_x", kKindInt, 0), Param("alpha", kKindFloat, 100),
            Param("intensity", kKindFloat, 1), Param("glow", kKindInt, 0),
            Param("glow_intensity", kKindFloat, 0.3), Param("audio_db_min", kKindFloat, 40),
            Param("audio_db_max", kKindFloat, 80), Param("audio_frequency_max", kKindFloat, 0.3),
            Param("use_gradient_color", kKindBool, true),
            Param("gradient_color", kKindText, "3,2282478,0;9133302,45;16020150,80")};
  }

  static Package Folded() {
    Package package;
    package.description["opengl_frag"] = {kFlat};
    package.description["params"] = Params();
    return package;
  }

  static Package Plain() {
    Package package = PassPackage({std::string(*FindBuiltinShader(kFlat))});
    package.description["params"] = Params();
    return package;
  }

  // The frames of both, with the answers that the context has.
  testing::AssertionResult LookAlike(KRVEffect& folded, KRVEffect& plain) {
    return LookAlike(folded, plain, result_, reference_);
  }
  testing::AssertionResult LookAlike(KRVEffect& folded, KRVEffect& plain, host::MemoryFrame& result,
                                     host::MemoryFrame& reference) {
    context_.output = &result;
    EXPECT_EQ(ProcessFrame(folded, context_), kOk);
    context_.output = &reference;
    EXPECT_EQ(ProcessFrame(plain, context_), kOk);
    return SamePictures(result, reference, 1);
  }

  host::MemoryFrame picture_{192, 108, kPixel8};
  host::MemoryFrame result_{192, 108, kPixel8};
  host::MemoryFrame reference_{192, 108, kPixel8};
  std::vector<int16_t> samples_;
  std::optional<host::BorrowedAudioBlock> audio_;
};

TEST_F(FoldedFrames, FollowEveryChangeOfTheChoices) {
  const Instance folded = host_.Make(Folded());
  const Instance plain = host_.Make(Plain());
  // More kinds of programs than are kept, and each of them twice.
  for (int round = 0; round < 2; ++round) {
    for (int kind = 0; kind < kKinds; ++kind) {
      for (const int direction : {0, 1}) {
        context_.answers["geometry_type"] = Int(kind);
        context_.answers["direction"] = Int(direction);
        context_.answers["glow"] = Int(round);
        EXPECT_TRUE(LookAlike(*folded, *plain)) << kind << ' ' << direction;
      }
    }
  }
}

TEST_F(FoldedFrames, ShowAnyNumberOfItems) {
  const Instance folded = host_.Make(Folded());
  const Instance plain = host_.Make(Plain());
  for (const int count : {-3, 0, 1, 63, 64, 65, 256, 257, 511, 512, 513, 2000000000}) {
    for (int kind = 0; kind < kKinds; ++kind) {
      if (kind == 3 && count > 1000) continue;  // pulses without end on software GL
      for (const char* name : {"spectrum_count", "point_count", "line_count", "pulse_count",
                               "circle_column_count", "rectangle_column_count"}) {
        context_.answers[name] = Int(count);
      }
      context_.answers["geometry_type"] = Int(kind);
      EXPECT_TRUE(LookAlike(*folded, *plain)) << kind << " of " << count;
    }
  }
}

// Where a figure is seen is known in tiles, so it is moved over their edges. The frame is wide:
// items are measured by its width, what is seen around them by its height.
TEST_F(FoldedFrames, ShowAllOfLargeItemsWhereverTheyStand) {
  const Instance folded = host_.Make(Folded());
  const Instance plain = host_.Make(Plain());
  host::MemoryFrame below(384, 120, kPixel8);
  host::MemoryFrame result(384, 120, kPixel8);
  host::MemoryFrame reference(384, 120, kPixel8);
  Fill(below, {60, 60, 60, 255});
  context_.input = &below;
  const std::vector<std::map<std::string, ParameterValue>> figures = {
      {{"geometry_type", Int(0)}, {"spectrum_width", Float(4)}, {"spectrum_round", Float(1)}},
      {{"geometry_type", Int(0)}, {"spectrum_minimum_height", Float(-60)}},
      {{"geometry_type", Int(1)}, {"point_size", Float(12)}},
      {{"geometry_type", Int(2)}, {"line_width", Float(30)}},
      {{"geometry_type", Int(4)}, {"circle_size", Float(4)}},
      {{"geometry_type", Int(4)}, {"circle_size", Float(1)}, {"clrcle_gap_size", Float(-0.6F)}},
      {{"geometry_type", Int(4)}, {"circle_size", Float(-1)}, {"clrcle_gap_size", Float(2)}},
      {{"geometry_type", Int(5)}, {"rectangle_height", Float(8)}},
      {{"geometry_type", Int(5)}, {"rectangle_height", Float(3)}, {"rectangle_width", Float(5)}},
      {{"geometry_type", Int(5)},
       {"rectangle_height", Float(-1)},
       {"rectangle_gap_size", Float(3)}}};
  AudioBlock* const sound = context_.audio;
  for (size_t i = 0; i < figures.size(); ++i) {
    for (const int direction : {0, 1, 2}) {
      for (const int count : {6, 7}) {
        for (const float place : {40.0F, 50.0F, 60.0F, 65.0F}) {
          context_.answers = figures[i];
          context_.answers["direction"] = Int(direction);
          for (const char* name : {"spectrum_count", "point_count", "line_count",
                                   "circle_column_count", "rectangle_column_count"}) {
            context_.answers[name] = Int(count);
          }
          context_.answers["position_y"] = Float(place);
          context_.audio = place == 50 || count == 6 ? sound : nullptr;
          EXPECT_TRUE(LookAlike(*folded, *plain, result, reference))
              << "figure " << i << ", direction " << direction << ", " << count << " items at "
              << place;
        }
      }
    }
  }
}

TEST_F(FoldedFrames, TakeAnyValueThatAHostSends) {
  const Instance folded = host_.Make(Folded());
  const Instance plain = host_.Make(Plain());
  const float nan = std::numeric_limits<float>::quiet_NaN();
  for (const char* name : {"scale_x", "spectrum_width", "spectrum_round", "intensity", "position_x",
                           "audio_frequency_max", "audio_db_min", "alpha"}) {
    for (const float value : {0.0f, -0.7f, -1e9f, 1e9f, 1e30f, nan}) {
      context_.answers = {{name, Float(value)}};
      EXPECT_TRUE(LookAlike(*folded, *plain)) << name << ' ' << value;
    }
  }
}

TEST_F(FoldedFrames, TakeAnyGradient) {
  const Instance folded = host_.Make(Folded());
  const Instance plain = host_.Make(Plain());
  for (const char* text :
       {"1,255,50", "2,255,0;65280,100", "3,255,60;65280,10;16711680,90", "3,255,0;65280,50;255,50",
        "8,1,0;255,10;9,20;65280,30;7,40;16711680,60;5,70;65535,90", "4,255,0;65280,40"}) {
    context_.answers["gradient_color"] = Text(text);
    EXPECT_TRUE(LookAlike(*folded, *plain)) << text;
  }
}

TEST_F(FoldedFrames, SurviveReleaseAndAnotherContext) {
  const Instance folded = host_.Make(Folded());
  Instance plain = host_.Make(Plain());
  EXPECT_TRUE(LookAlike(*folded, *plain));
  EXPECT_EQ(folded->ReleaseResources(), kOk);
  EXPECT_EQ(folded->Initialize(&context_), kOk);
  EXPECT_TRUE(LookAlike(*folded, *plain));
  host_.ReplaceContext();
  plain = host_.Make(Plain());
  EXPECT_EQ(folded->ReleaseResources(), kOk);
  EXPECT_EQ(folded->Initialize(&context_), kOk);
  EXPECT_TRUE(LookAlike(*folded, *plain));
}

}  // namespace
}  // namespace krv::test
