// The three figures of the halo geometry shader against the reference.
#include <gtest/gtest.h>

#include "shaders/builtin_shader_test.h"
#include "shaders/folded_checks.h"
#include "shaders/halo_canvas.h"
#include "shaders/halo_cases.h"
#include "shaders/halo_geometry_reference.h"

namespace krv::test {
namespace {

constexpr Tolerance kBytes = {2.0 / 255};
constexpr const char* kKindNames[] = {"Points", "Ecg", "Pulses"};

HaloGeometryFigure Figure(int geometry_type) {
  HaloGeometryFigure figure;
  figure.spectrum = MusicalSpectrum();
  figure.geometry_type = geometry_type;
  return figure;
}

class HaloGeometry
    : public HaloGeometryShaderTest<::testing::TestWithParam<std::tuple<int, HaloCase>>> {};

TEST_P(HaloGeometry, FollowsItsFormulas) {
  const auto& [kind, test_case] = GetParam();
  HaloGeometryFigure figure = Figure(kind);
  test_case.change(figure);
  const auto drawn = DrawFigure(program(), figure, test_case.width, test_case.height, GL_RGBA32F);
  ExpectMatches(drawn, figure, test_case.tolerance);
}

TEST_P(HaloGeometry, IsTheSameInTheFoldedForm) {
  const auto& [kind, test_case] = GetParam();
  HaloGeometryFigure figure = Figure(kind);
  test_case.change(figure);
  ExpectFoldsAlike(program(), folded(), figure, test_case.width, test_case.height,
                   test_case.tolerance);
}

INSTANTIATE_TEST_SUITE_P(Shared, HaloGeometry,
                         ::testing::Combine(::testing::Range(0, 3),
                                            ::testing::ValuesIn(SharedHaloCases())),
                         [](const auto& test) {
                           return kKindNames[std::get<0>(test.param)] +
                                  std::get<1>(test.param).name;
                         });

struct OwnCase {
  std::string name;
  int kind;
  std::function<void(HaloGeometryFigure&)> change;
  Tolerance tolerance = {2e-3};
};

void PrintTo(const OwnCase& test_case, std::ostream* out) { *out << test_case.name; }

class HaloGeometryOwn : public HaloGeometryShaderTest<::testing::TestWithParam<OwnCase>> {};

TEST_P(HaloGeometryOwn, FollowsItsFormulas) {
  HaloGeometryFigure figure = Figure(GetParam().kind);
  GetParam().change(figure);
  ExpectMatches(DrawFigure(program(), figure, 160, 90, GL_RGBA32F), figure, GetParam().tolerance);
}

TEST_P(HaloGeometryOwn, IsTheSameInTheFoldedForm) {
  HaloGeometryFigure figure = Figure(GetParam().kind);
  GetParam().change(figure);
  ExpectFoldsAlike(program(), folded(), figure, 160, 90, GetParam().tolerance);
}

std::string OwnName(const ::testing::TestParamInfo<OwnCase>& test) { return test.param.name; }

using F = HaloGeometryFigure;

INSTANTIATE_TEST_SUITE_P(
    Points, HaloGeometryOwn,
    ::testing::Values(
        OwnCase{"Inwards", 0, [](F& f) { f.point_direction = 1; }},
        OwnCase{"InwardsInAGradient", 0, [](F& f) { UseGradient(f), f.point_direction = 1; }},
        OwnCase{"OfUnknownDirection", 0, [](F& f) { f.point_direction = -3; }},
        OwnCase{"Huge", 0, [](F& f) { f.point_size = 6; }},
        OwnCase{"WithoutSize", 0, [](F& f) { f.point_size = 0; }},
        OwnCase{"OnlyOne", 0, [](F& f) { f.point_count = 1; }},
        OwnCase{"Three", 0, [](F& f) { f.point_count = 3; }},
        OwnCase{"Dense", 0, [](F& f) { f.point_count = 150, f.point_size = 0.3f; }},
        OwnCase{"OfOddCount", 0, [](F& f) { f.point_count = 21, f.audio_mirror = true; }}),
    OwnName);

INSTANTIATE_TEST_SUITE_P(
    Ecg, HaloGeometryOwn,
    ::testing::Values(OwnCase{"Thick", 1, [](F& f) { f.ECG_line_width = 4; }},
                      OwnCase{"ThickInRainbowColors", 1,
                              [](F& f) { f.ECG_line_width = 4, f.single_color = 0; }},
                      OwnCase{"HairThin", 1, [](F& f) { f.ECG_line_width = 0; }},
                      OwnCase{"OnlyOneBeat", 1, [](F& f) { f.ECG_count = 1; }},
                      OwnCase{"TwoBeats", 1, [](F& f) { f.ECG_count = 2; }},
                      OwnCase{"ManyBeats", 1, [](F& f) { f.ECG_count = 25; }},
                      OwnCase{"SeenAlongThePlane", 1,
                              [](F& f) { f.inclination_degree_x = 89, f.ECG_count = 5; }}),
    OwnName);

INSTANTIATE_TEST_SUITE_P(
    Pulses, HaloGeometryOwn,
    ::testing::Values(
        OwnCase{"Filled", 2, [](F& f) { f.pulse_fill = true; }},
        OwnCase{"FilledInAGradient", 2, [](F& f) { UseGradient(f), f.pulse_fill = true; }},
        OwnCase{"FilledAndTurning", 2,
                [](F& f) { f.pulse_fill = true, f.rotate_speed = 0.7f, f.time_second = 3; }},
        OwnCase{"Touching", 2, [](F& f) { f.pulse_width = 10; }},
        OwnCase{"Overlapping", 2, [](F& f) { f.pulse_width = 17; }},
        OwnCase{"OverlappingFilled", 2, [](F& f) { f.pulse_width = 17, f.pulse_fill = true; }},
        OwnCase{"SoWideThatSomeAreCutOff", 2,
                [](F& f) { f.pulse_width = 45, f.intensity = 0.4f, f.pulse_line_width = 3; }},
        OwnCase{"SoWideThatSomeAreCutOffFilled", 2,
                [](F& f) { f.pulse_width = 45, f.intensity = 0.4f, f.pulse_fill = true; }},
        OwnCase{"Apart", 2, [](F& f) { f.pulse_width = 2; }},
        OwnCase{"ThickLine", 2, [](F& f) { f.pulse_line_width = 4; }},
        OwnCase{"WithoutLineWidth", 2, [](F& f) { f.pulse_line_width = 0; }},
        OwnCase{"OnlyOne", 2, [](F& f) { f.pulse_count = 1; }},
        OwnCase{"Dense", 2, [](F& f) { f.pulse_count = 70; }, kBytes}),
    OwnName);

class HaloGeometryAtSize : public HaloGeometryShaderTest<::testing::TestWithParam<int>> {};

// What reaches the picture: bytes, at the sizes of effects.
TEST_P(HaloGeometryAtSize, DiffersAtEdgesOnly) {
  HaloGeometryFigure figure = Figure(GetParam());
  figure.single_color = 0;
  figure.rotate_speed = 0.3f;
  figure.time_second = 12.4f;
  figure.inclination_degree_z = 12;
  for (const auto& [width, height] : {std::pair(320, 180), std::pair(853, 480)}) {
    ExpectMatches(DrawFigure(program(), figure, width, height, GL_RGBA8), figure, kBytes);
    ExpectFoldsAlike(program(), folded(), figure, width, height, kBytes);
  }
}

INSTANTIATE_TEST_SUITE_P(Kinds, HaloGeometryAtSize, ::testing::Range(0, 3),
                         [](const auto& test) { return kKindNames[test.param]; });

}  // namespace
}  // namespace krv::test
