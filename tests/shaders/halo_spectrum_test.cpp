// The segments of the halo spectrum shader against the reference.
#include <gtest/gtest.h>

#include "shaders/builtin_shader_test.h"
#include "shaders/folded_checks.h"
#include "shaders/halo_canvas.h"
#include "shaders/halo_cases.h"
#include "shaders/halo_spectrum_reference.h"

namespace krv::test {
namespace {

constexpr Tolerance kBytes = {2.0 / 255};
constexpr Tolerance kFloats = {2e-3};

struct Kind {
  const char* name;
  int direction;
  int round;
};

void PrintTo(const Kind& kind, std::ostream* out) { *out << kind.name; }

const std::vector<Kind>& Kinds() {
  static const std::vector<Kind> kinds = {
      {"SlicesInwards", 0, 0},   {"SlicesOutwards", 1, 0},   {"SlicesBothWays", 2, 0},
      {"CapsulesInwards", 0, 1}, {"CapsulesOutwards", 1, 1}, {"CapsulesBothWays", 2, 1},
  };
  return kinds;
}

HaloSpectrumFigure Figure(const Kind& kind) {
  HaloSpectrumFigure figure;
  figure.spectrum = MusicalSpectrum();
  figure.direction = kind.direction;
  figure.round = kind.round;
  return figure;
}

class HaloSpectrum
    : public HaloSpectrumShaderTest<::testing::TestWithParam<std::tuple<Kind, HaloCase>>> {};

TEST_P(HaloSpectrum, FollowsItsFormulas) {
  const auto& [kind, test_case] = GetParam();
  HaloSpectrumFigure figure = Figure(kind);
  test_case.change(figure);
  const auto drawn = DrawFigure(program(), figure, test_case.width, test_case.height, GL_RGBA32F);
  ExpectMatches(drawn, figure, test_case.tolerance);
}

TEST_P(HaloSpectrum, IsTheSameInTheFoldedForm) {
  const auto& [kind, test_case] = GetParam();
  HaloSpectrumFigure figure = Figure(kind);
  test_case.change(figure);
  ExpectFoldsAlike(program(), folded(), figure, test_case.width, test_case.height,
                   test_case.tolerance);
}

INSTANTIATE_TEST_SUITE_P(Shared, HaloSpectrum,
                         ::testing::Combine(::testing::ValuesIn(Kinds()),
                                            ::testing::ValuesIn(SharedHaloCases())),
                         [](const auto& test) {
                           return std::get<0>(test.param).name + std::get<1>(test.param).name;
                         });

struct OwnCase {
  std::string name;
  std::function<void(HaloSpectrumFigure&)> change;
};

void PrintTo(const OwnCase& test_case, std::ostream* out) { *out << test_case.name; }

class HaloSpectrumOwn
    : public HaloSpectrumShaderTest<::testing::TestWithParam<std::tuple<Kind, OwnCase>>> {};

TEST_P(HaloSpectrumOwn, FollowsItsFormulas) {
  const auto& [kind, test_case] = GetParam();
  HaloSpectrumFigure figure = Figure(kind);
  test_case.change(figure);
  ExpectMatches(DrawFigure(program(), figure, 160, 90, GL_RGBA32F), figure, kFloats);
}

TEST_P(HaloSpectrumOwn, IsTheSameInTheFoldedForm) {
  const auto& [kind, test_case] = GetParam();
  HaloSpectrumFigure figure = Figure(kind);
  test_case.change(figure);
  ExpectFoldsAlike(program(), folded(), figure, 160, 90, kFloats);
}

using F = HaloSpectrumFigure;

INSTANTIATE_TEST_SUITE_P(
    Segments, HaloSpectrumOwn,
    ::testing::Combine(
        ::testing::ValuesIn(Kinds()),
        ::testing::Values(
            OwnCase{"WithoutGap", [](F& f) { f.gap_degree = 0; }},
            OwnCase{"OverlappingByANegativeGap", [](F& f) { f.gap_degree = -4; }},
            OwnCase{"WiderThanATurn", [](F& f) { f.step_num = 1, f.gap_degree = -50; }},
            OwnCase{"TwoWiderThanATurn", [](F& f) { f.step_num = 2, f.gap_degree = -250; }},
            OwnCase{"WithGapOfAStep", [](F& f) { f.gap_degree = 15; }},
            OwnCase{"WithGapBeyondAStep", [](F& f) { f.gap_degree = 200; }},
            OwnCase{"OnlyOne", [](F& f) { f.step_num = 1, f.gap_degree = 250; }},
            OwnCase{"Three", [](F& f) { f.step_num = 3, f.gap_degree = 40; }},
            OwnCase{"Dense", [](F& f) { f.step_num = 120, f.gap_degree = 1; }},
            OwnCase{"OfOddCount", [](F& f) { f.step_num = 35, f.audio_mirror = true; }},
            OwnCase{"WithoutStroke", [](F& f) { f.stroke_width = 0; }},
            OwnCase{"WithWideStroke", [](F& f) { f.stroke_width = 60; }},
            OwnCase{"OnASmallRing", [](F& f) { f.radius = 0.8f; }},
            OwnCase{"OnAWideRing", [](F& f) { f.radius = 4.6f; }},
            OwnCase{"OfUnknownRoundness", [](F& f) { f.round = 7, UseGradient(f); }},
            OwnCase{"OfUnknownDirection", [](F& f) { f.direction = 5, UseGradient(f); }},
            OwnCase{"InAGradientRoundTheRing",
                    [](F& f) { UseGradient(f), f.gradient_color_direction = 1; }},
            OwnCase{"InAGradientOfUnknownDirection",
                    [](F& f) { UseGradient(f), f.gradient_color_direction = 4; }})),
    [](const auto& test) { return std::get<0>(test.param).name + std::get<1>(test.param).name; });

class HaloSpectrumAtSize : public HaloSpectrumShaderTest<::testing::TestWithParam<Kind>> {};

// What reaches the picture: bytes, at the sizes of effects.
TEST_P(HaloSpectrumAtSize, DiffersAtEdgesOnly) {
  HaloSpectrumFigure figure = Figure(GetParam());
  figure.single_color = 0;
  figure.rotate_speed = 0.3f;
  figure.time_second = 12.4f;
  figure.inclination_degree_z = 12;
  for (const auto& [width, height] : {std::pair(320, 180), std::pair(853, 480)}) {
    ExpectMatches(DrawFigure(program(), figure, width, height, GL_RGBA8), figure, kBytes);
    ExpectFoldsAlike(program(), folded(), figure, width, height, kBytes);
  }
}

INSTANTIATE_TEST_SUITE_P(Kinds, HaloSpectrumAtSize, ::testing::ValuesIn(Kinds()),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace krv::test
