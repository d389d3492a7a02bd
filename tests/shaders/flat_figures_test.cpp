// The six figures of the flat geometry shader, and everything that shapes them, against the
// reference.
#include <gtest/gtest.h>

#include <functional>

#include "shaders/builtin_shader_test.h"
#include "shaders/expect_matches.h"
#include "shaders/flat_canvas.h"
#include "shaders/flat_reference.h"
#include "shaders/folded_checks.h"

namespace krv::test {
namespace {

constexpr double kByteTolerance = 1.5 / 255;
constexpr double kFloatTolerance = 2e-3;

FlatFigure Figure(int geometry_type) {
  FlatFigure figure;
  figure.spectrum = MusicalSpectrum();
  figure.geometry_type = geometry_type;
  return figure;
}

struct Case {
  std::string name;
  std::function<void(FlatFigure&)> change;
  int width = 160;
  int height = 90;
  bool folds = true;
};

using FigureCase = std::tuple<int, Case>;

constexpr const char* kKindNames[] = {"Bars",   "Points",        "Lines",
                                      "Pulses", "CircleColumns", "RectangleColumns"};

std::string CaseName(const ::testing::TestParamInfo<FigureCase>& info) {
  return kKindNames[std::get<0>(info.param)] + std::get<1>(info.param).name;
}

void PrintTo(const Case& test_case, std::ostream* out) { *out << test_case.name; }

class FlatFigures : public FlatShaderTest<::testing::TestWithParam<FigureCase>> {};

TEST_P(FlatFigures, FollowTheirFormulas) {
  const auto& [kind, test_case] = GetParam();
  FlatFigure figure = Figure(kind);
  test_case.change(figure);
  const int width = test_case.width;
  const int height = test_case.height;
  ExpectMatches(DrawFigure(program(), figure, width, height, GL_RGBA8), figure, kByteTolerance);
  ExpectMatches(DrawFigure(program(), figure, width, height, GL_RGBA32F), figure, kFloatTolerance);
}

// A whole step of 255 apart at most, which two ways of rounding may come to.
constexpr double kOneStep = 1.01 / 255;

TEST_P(FlatFigures, AreTheSameInTheFoldedForm) {
  const auto& [kind, test_case] = GetParam();
  FlatFigure figure = InBytes(Figure(kind));
  test_case.change(figure);
  figure = InBytes(figure);
  const int width = test_case.width;
  const int height = test_case.height;
  const Picture plain = DrawFigure(program(), figure, width, height, GL_RGBA8);
  const Picture drawn = folded().Draw(figure, width, height, GL_RGBA8);
  EXPECT_EQ(folded().folded(), test_case.folds);
  EXPECT_LE(LargestDifference(drawn, plain), kOneStep);
  ExpectMatches(folded().Draw(figure, width, height, GL_RGBA32F), figure, kFloatTolerance);
}

// What every kind must honour.
const std::vector<Case>& SharedCases() {
  static const std::vector<Case> cases = {
      {"FromTheBase", [](FlatFigure&) {}},
      {"AboutTheMiddle", [](FlatFigure& f) { f.direction = 1; }},
      {"OfUnknownDirection", [](FlatFigure& f) { f.direction = 2; }},
      {"Mirrored", [](FlatFigure& f) { f.audio_mirror = true; }},
      {"Averaged", [](FlatFigure& f) { f.audio_averaging = true; }},
      {"AveragedAndMirrored", [](FlatFigure& f) { f.audio_averaging = f.audio_mirror = true; }},
      {"OfPartOfTheSpectrum",
       [](FlatFigure& f) { f.audio_frequency_min = 0.13f, f.audio_frequency_max = 0.52f; }},
      {"ShiftedByAThird", [](FlatFigure& f) { f.offset_x = 0.34f; }},
      {"ShiftedBackwards", [](FlatFigure& f) { f.offset_x = -0.71f; }},
      {"AtHalfLoudness", [](FlatFigure& f) { f.audio_left_db = 77; }},
      {"AtLowIntensity", [](FlatFigure& f) { f.intensity = 0.6f; }},
      {"AtHighIntensity", [](FlatFigure& f) { f.intensity = 2.3f; }},
      {"Glowing", [](FlatFigure& f) { f.glow = 1; }},
      {"GlowingFaintly", [](FlatFigure& f) { f.glow = 1, f.glow_intensity = 0; }},
      {"GlowingWidely", [](FlatFigure& f) { f.glow = 1, f.glow_intensity = 1.2f; }},
      {"HalfTransparent", [](FlatFigure& f) { f.alpha = 45; }},
      {"InRainbowColors", [](FlatFigure& f) { f.single_color = 0; }},
      {"Scaled", [](FlatFigure& f) { f.scale_x = 0.61f, f.scale_y = 0.43f; }},
      {"ScaledNegatively", [](FlatFigure& f) { f.scale_x = -0.8f, f.scale_y = -0.55f; }},
      {"FlippedSideways", [](FlatFigure& f) { f.flip_x = true; }},
      {"FlippedUpsideDown", [](FlatFigure& f) { f.flip_y = true, f.scale_y = 0.7f; }},
      {"Moved", [](FlatFigure& f) { f.position_x = 41, f.position_y = 63; }},
      {"TurnedAboutX", [](FlatFigure& f) { f.rotate_x = 38; }},
      {"TurnedAboutY", [](FlatFigure& f) { f.rotate_y = -52; }},
      {"TurnedAboutZ", [](FlatFigure& f) { f.rotate_z = 23; }},
      {"TurnedAboutTheMiddle",
       [](FlatFigure& f) { f.direction = 1, f.rotate_x = 31, f.rotate_y = 17, f.rotate_z = -40; }},
      {"TurnedEveryWay",
       [](FlatFigure& f) {
         f.rotate_x = -48, f.rotate_y = 21, f.rotate_z = 112, f.flip_x = true;
         f.scale_x = 0.7f, f.scale_y = 0.9f, f.position_x = 58, f.position_y = 44;
         f.single_color = 0;
       }},
      {"TurnedSoThatRaysMiss",
       [](FlatFigure& f) { f.rotate_x = -82, f.rotate_y = 24, f.scale_x = f.scale_y = 2; }},
      {"OnASquareFrame", [](FlatFigure&) {}, 96, 96},
      {"OnAnUprightFrame", [](FlatFigure&) {}, 72, 128},
      {"OnAWideFrame", [](FlatFigure& f) { f.single_color = 0; }, 239, 100},
  };
  return cases;
}

INSTANTIATE_TEST_SUITE_P(Shared, FlatFigures,
                         ::testing::Combine(::testing::Range(0, 6),
                                            ::testing::ValuesIn(SharedCases())),
                         CaseName);

INSTANTIATE_TEST_SUITE_P(
    Bars, FlatFigures,
    ::testing::Combine(
        ::testing::Values(0),
        ::testing::Values(
            Case{"Rounded", [](FlatFigure& f) { f.spectrum_round = 1; }},
            Case{"HalfRounded", [](FlatFigure& f) { f.spectrum_round = 0.5f; }},
            Case{"WithTallMinimum", [](FlatFigure& f) { f.spectrum_minimum_height = 40; }},
            Case{"WiderThanTheNeighbourhood", [](FlatFigure& f) { f.spectrum_width = 31; }},
            Case{"OnlyOne", [](FlatFigure& f) { f.spectrum_count = 1; }},
            Case{"ManyThin",
                 [](FlatFigure& f) { f.spectrum_count = 70, f.spectrum_width = 0.4f; }})),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Points, FlatFigures,
    ::testing::Combine(
        ::testing::Values(1),
        ::testing::Values(Case{"Huge", [](FlatFigure& f) { f.point_size = 40; }},
                          Case{"WithoutSize", [](FlatFigure& f) { f.point_size = 0; }},
                          Case{"OnlyOne", [](FlatFigure& f) { f.point_count = 1; }})),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Lines, FlatFigures,
    ::testing::Combine(
        ::testing::Values(2),
        ::testing::Values(Case{"Thick", [](FlatFigure& f) { f.line_width = 20; }},
                          Case{"WithTwoVertices", [](FlatFigure& f) { f.line_count = 2; }},
                          Case{"WithOneVertexDrawNothing", [](FlatFigure& f) { f.line_count = 1; },
                               160, 90, false},
                          Case{"Dense", [](FlatFigure& f) { f.line_count = 90; }})),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Pulses, FlatFigures,
    ::testing::Combine(
        ::testing::Values(3),
        ::testing::Values(
            Case{"Filled", [](FlatFigure& f) { f.pulse_fill = true; }},
            Case{"FilledAboutTheMiddle",
                 [](FlatFigure& f) { f.pulse_fill = true, f.direction = 1; }},
            Case{"FilledAndShifted",
                 [](FlatFigure& f) { f.pulse_fill = true, f.offset_x = 0.27f; }},
            Case{"FilledGlowing", [](FlatFigure& f) { f.pulse_fill = true, f.glow = 1; }},
            Case{"Overlapping", [](FlatFigure& f) { f.pulse_count = 14, f.pulse_width = 2; }},
            Case{"Apart", [](FlatFigure& f) { f.pulse_count = 4, f.pulse_width = 0.5f; }},
            Case{"ThickLine", [](FlatFigure& f) { f.pulse_line_width = 6; }},
            Case{"OnlyOne", [](FlatFigure& f) { f.pulse_count = 1; }})),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    CircleColumns, FlatFigures,
    ::testing::Combine(
        ::testing::Values(4),
        ::testing::Values(
            Case{"Small", [](FlatFigure& f) { f.circle_size = 0.4f, f.clrcle_gap_size = 0.1f; }},
            Case{"Large", [](FlatFigure& f) { f.circle_size = 6; }},
            Case{"Overlapping", [](FlatFigure& f) { f.clrcle_gap_size = -0.4f; }},
            Case{"SmallAboutTheMiddle",
                 [](FlatFigure& f) { f.circle_size = 0.6f, f.direction = 1; }})),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    RectangleColumns, FlatFigures,
    ::testing::Combine(
        ::testing::Values(5),
        ::testing::Values(Case{"Flat", [](FlatFigure& f) { f.rectangle_height = 0.25f; }},
                          Case{"Tall", [](FlatFigure& f) { f.rectangle_height = 7; }},
                          Case{"Touching", [](FlatFigure& f) { f.rectangle_gap_size = 0; }},
                          Case{"FlatAboutTheMiddle",
                               [](FlatFigure& f) { f.rectangle_height = 0.4f, f.direction = 1; }})),
    CaseName);

// Levels to both sides of the one that stays on the middle line, near it and further away.
INSTANTIATE_TEST_SUITE_P(DeadZone, FlatFigures,
                         ::testing::Combine(::testing::Values(1, 2, 3),
                                            ::testing::Values(Case{
                                                "NearTheMiddleLine",
                                                [](FlatFigure& f) {
                                                  f.direction = 1;
                                                  f.audio_left_db = f.audio_db_max;
                                                  f.spectrum = {0.525f, 0.475f, 0.56f, 0.44f};
                                                }})),
                         CaseName);

const std::vector<Case>& GradientCases() {
  static const std::vector<Case> cases = {
      {"InAGradientUpwards", UseGradient},
      {"InAGradientAcross",
       [](FlatFigure& f) {
         UseGradient(f);
         f.gradient_color_direction = 1;
       }},
      // The plane ends at a horizon inside the picture; beyond it rays miss.
      {"InAGradientWhereRaysMiss",
       [](FlatFigure& f) {
         UseGradient(f);
         f.gradient_color_direction = 1;
         f.rotate_x = -82, f.rotate_y = 24;
       }},
      {"InAGradientOfUnknownDirection",
       [](FlatFigure& f) {
         UseGradient(f);
         f.gradient_color_direction = 7;
       }},
      {"InAGradientOfTwoColors",
       [](FlatFigure& f) {
         UseGradient(f);
         f.gradient.pop_back();
         f.gradient_color_count = 2;
       }},
      {"InAGradientWithAStep",
       [](FlatFigure& f) {
         UseGradient(f);
         f.gradient = {{1, 0, 0, 0}, {0, 1, 0, 0.4f}, {0, 0, 1, 0.4f}, {1, 1, 0, 1}};
         f.gradient_color_count = 4;
       }},
      {"InAnUnsortedGradient",
       [](FlatFigure& f) {
         UseGradient(f);
         std::swap(f.gradient[0], f.gradient[2]);
       }},
  };
  return cases;
}

INSTANTIATE_TEST_SUITE_P(Gradients, FlatFigures,
                         ::testing::Combine(::testing::Values(0, 3),
                                            ::testing::ValuesIn(GradientCases())),
                         CaseName);

}  // namespace
}  // namespace krv::test
