// What the halo shaders do at the ends of their ranges and beyond them.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "graphics/opengl/impl/shader.h"
#include "shaders/builtin_shader_test.h"
#include "shaders/expect_matches.h"
#include "shaders/halo_canvas.h"
#include "shaders/halo_geometry_reference.h"
#include "shaders/halo_spectrum_reference.h"

namespace krv::test {
namespace {

constexpr int kWidth = 120;
constexpr int kHeight = 100;
constexpr Tolerance kTolerance = {2e-3};
constexpr double kPi = std::numbers::pi;

// Both shaders at once: most edges concern the two alike.
class HaloEdgeCases : public ::testing::Test {
 protected:
  void SetUp() override {
    context_ = MakeSoftwareContext();
    ASSERT_NE(context_, nullptr);
    geometry_ = Compile(kHaloGeometryShader, "");
    spectrum_ = Compile(kHaloSpectrumShader, "");
  }

  static std::unique_ptr<ShaderProgram> Compile(std::string_view name, const char* head) {
    std::string source(*FindBuiltinShader(name));
    source.insert(source.find('\n') + 1, head);
    auto program = std::make_unique<ShaderProgram>(source);
    EXPECT_TRUE(program->ok()) << program->log();
    return program;
  }

  Picture DrawFloats(const HaloGeometryFigure& figure) {
    return DrawFigure(*geometry_, figure, kWidth, kHeight, GL_RGBA32F);
  }
  Picture DrawFloats(const HaloSpectrumFigure& figure) {
    return DrawFigure(*spectrum_, figure, kWidth, kHeight, GL_RGBA32F);
  }
  Picture DrawSmall(const HaloGeometryFigure& figure) {
    return DrawFigure(*geometry_, figure, 25, 15, GL_RGBA32F);
  }
  Picture DrawSmall(const HaloSpectrumFigure& figure) {
    return DrawFigure(*spectrum_, figure, 25, 15, GL_RGBA32F);
  }
  Picture DrawBytes(const HaloGeometryFigure& figure) {
    return DrawFigure(*geometry_, figure, kWidth, kHeight, GL_RGBA8);
  }
  Picture DrawBytes(const HaloSpectrumFigure& figure) {
    return DrawFigure(*spectrum_, figure, kWidth, kHeight, GL_RGBA8);
  }

  template <class Figure>
  void ExpectNoShape(const Figure& figure) {
    const Picture picture = DrawFloats(figure);
    for (const Pixel& pixel : picture.pixels) ASSERT_LT(pixel[3], 1e-6);
    ExpectMatches(picture, figure, kTolerance);
  }

  template <class Figure>
  void ExpectNumbers(const Figure& figure) {
    for (const Pixel& pixel : DrawSmall(figure).pixels) {
      for (const double channel : pixel) ASSERT_TRUE(std::isfinite(channel));
    }
  }

  std::unique_ptr<host::GlContext> context_;
  std::unique_ptr<ShaderProgram> geometry_;
  std::unique_ptr<ShaderProgram> spectrum_;
};

// Seen straight, every kind in turn.
HaloGeometryFigure Geometry(int kind) {
  HaloGeometryFigure figure;
  figure.inclination_degree_x = 0;
  figure.geometry_type = kind;
  return figure;
}

HaloSpectrumFigure Segments(int direction, int round) {
  HaloSpectrumFigure figure;
  figure.inclination_degree_x = 0;
  figure.direction = direction;
  figure.round = round;
  return figure;
}

std::vector<HaloGeometryFigure> EveryGeometry() { return {Geometry(0), Geometry(1), Geometry(2)}; }

std::vector<HaloSpectrumFigure> EverySegments() {
  return {Segments(0, 0), Segments(1, 0), Segments(2, 0),
          Segments(0, 1), Segments(1, 1), Segments(2, 1)};
}

// The pixel of a place seen straight: this far from the centre, this many degrees on from the first
// point or segment, which is at the top of the picture.
const Pixel& AtRing(const Picture& picture, double from_centre, double degrees) {
  const double scale = kHeight * 0.5 / std::tan(kPi / 12) / 19;
  const double angle = degrees * kPi / 180;
  return picture.At(static_cast<int>(kWidth / 2 - scale * from_centre * std::sin(angle)),
                    static_cast<int>(kHeight / 2 - scale * from_centre * std::cos(angle)));
}

TEST_F(HaloEdgeCases, RadiusOfZeroGivesOpaqueBlackEverywhere) {
  for (auto figure : EveryGeometry()) {
    figure.radius = 0;
    for (const Pixel& pixel : DrawBytes(figure).pixels) ASSERT_EQ(pixel, (Pixel{0, 0, 0, 1}));
  }
  for (auto figure : EverySegments()) {
    figure.radius = 0;
    figure.glow = 1;
    for (const Pixel& pixel : DrawBytes(figure).pixels) ASSERT_EQ(pixel, (Pixel{0, 0, 0, 1}));
  }
}

TEST_F(HaloEdgeCases, FullAlphaInsideAShapeIsJustBelowOpaque) {
  HaloGeometryFigure points = Geometry(0);
  points.spectrum = {0.0f};
  points.point_size = 4;
  EXPECT_FLOAT_EQ(AtRing(DrawFloats(points), points.radius, 0)[3], 0.99f);
  EXPECT_DOUBLE_EQ(std::round(AtRing(DrawBytes(points), points.radius, 0)[3] * 255), 252);
  const HaloSpectrumFigure segments = Segments(1, 0);
  EXPECT_FLOAT_EQ(AtRing(DrawFloats(segments), segments.radius + 0.5, 2)[3], 0.99f);
}

TEST_F(HaloEdgeCases, AlphaAboveItsRangeStaysBelowOpaque) {
  HaloGeometryFigure pulses = Geometry(2);
  pulses.alpha = 900;
  for (const Pixel& pixel : DrawFloats(pulses).pixels) ASSERT_LE(pixel[3], 0.99f);
  HaloSpectrumFigure segments = Segments(1, 1);
  segments.alpha = 900;
  for (const Pixel& pixel : DrawFloats(segments).pixels) ASSERT_LE(pixel[3], 0.99f);
}

TEST_F(HaloEdgeCases, BelowTheLowestLevelNothingMoves) {
  const auto expect_still = [&](auto figure) {
    auto silent = figure;
    silent.spectrum = {0.0f};
    for (const float level : {60.0f, 0.0f}) {
      figure.audio_left_db = level;
      EXPECT_EQ(LargestDifference(DrawFloats(figure), DrawFloats(silent)), 0);
    }
  };
  for (const auto& figure : EveryGeometry()) expect_still(figure);
  for (const auto& figure : EverySegments()) expect_still(figure);
}

TEST_F(HaloEdgeCases, QuietFiguresLieOnTheRing) {
  for (auto figure : EveryGeometry()) {
    figure.audio_left_db = figure.audio_db_min;
    figure.ECG_line_width = 2;
    const Picture picture = DrawFloats(figure);
    EXPECT_GT(AtRing(picture, figure.radius, 0)[3], 0.9) << figure.geometry_type;
    EXPECT_LT(AtRing(picture, figure.radius + 1, 0)[3], 0.1) << figure.geometry_type;
    EXPECT_LT(AtRing(picture, figure.radius - 1, 0)[3], 0.1) << figure.geometry_type;
  }
}

TEST_F(HaloEdgeCases, QuietSegmentsKeepTheirStroke) {
  HaloSpectrumFigure figure = Segments(1, 0);
  figure.audio_left_db = figure.audio_db_min;
  figure.stroke_width = 50;  // one scene unit
  const Picture picture = DrawFloats(figure);
  EXPECT_GT(AtRing(picture, figure.radius + 0.7, 0)[3], 0.9);
  EXPECT_LT(AtRing(picture, figure.radius + 1.3, 0)[3], 0.1);
}

TEST_F(HaloEdgeCases, GapOfAStepOrMoreLeavesATenthOfADegree) {
  for (const int round : {0, 1}) {
    HaloSpectrumFigure thin = Segments(1, round);
    thin.step_num = 12;
    thin.gap_degree = 30 - 0.1f;
    HaloSpectrumFigure reduced = thin;
    for (const float gap : {30.0f, 31.0f, 400.0f}) {
      reduced.gap_degree = gap;
      EXPECT_LT(LargestDifference(DrawFloats(thin), DrawFloats(reduced)), 1e-3) << gap;
    }
    reduced.gap_degree = 29;
    EXPECT_GT(LargestDifference(DrawFloats(thin), DrawFloats(reduced)), 0.05);
  }
}

TEST_F(HaloEdgeCases, RaysThatMissAreColoredByTheSameBand) {
  HaloSpectrumFigure figure = Segments(1, 0);
  UseGradient(figure);
  figure.glow_intensity = 1;
  figure.inclination_degree_x = 86;
  ExpectMatches(DrawFloats(figure), figure, kTolerance);
  // A band that is empty gives no ratio, but numbers.
  figure.stroke_width = -50 * (figure.radius + 3);
  ExpectNumbers(figure);
}

TEST_F(HaloEdgeCases, GradientWithFewerThanTwoStopsIsBlack) {
  const auto expect_black = [&](auto figure, int count) {
    figure.single_color = 0;
    figure.use_gradient_color = true;
    figure.gradient = {{1, 1, 1, 0.5f}};
    figure.gradient_color_count = count;
    for (const Pixel& pixel : DrawFloats(figure).pixels) {
      ASSERT_EQ(pixel[0] + pixel[1] + pixel[2], 0) << count;
    }
  };
  for (const int count : {1, 0, -3}) {
    expect_black(Geometry(0), count);
    expect_black(Geometry(2), count);
    expect_black(Segments(1, 0), count);
  }
}

TEST_F(HaloEdgeCases, CountsOfZeroOrBelowDrawNoShape) {
  for (const int count : {0, -5}) {
    for (auto figure : EveryGeometry()) {
      figure.point_count = figure.ECG_count = figure.pulse_count = count;
      ExpectNoShape(figure);
    }
    for (auto figure : EverySegments()) {
      figure.step_num = count;
      ExpectNoShape(figure);
    }
  }
}

TEST_F(HaloEdgeCases, UnknownKindsDrawNoShape) {
  for (const int kind : {3, -1, 1000000}) ExpectNoShape(Geometry(kind));
}

TEST_F(HaloEdgeCases, EqualLevelLimitsActAsAStep) {
  HaloSpectrumFigure figure = Segments(1, 0);
  figure.audio_db_min = figure.audio_db_max = 80;
  for (const float level : {79.0f, 80.0f, 81.0f}) {
    figure.audio_left_db = level;
    const bool stands = AtRing(DrawFloats(figure), figure.radius + 1, 0)[3] > 0.5;
    EXPECT_EQ(stands, level > 80) << level;
  }
}

TEST_F(HaloEdgeCases, SegmentsWithoutLengthAreCirclesWhenRound) {
  HaloSpectrumFigure figure = Segments(2, 1);
  figure.spectrum = {0.0f};
  figure.stroke_width = 0;
  const Picture picture = DrawFloats(figure);
  EXPECT_GT(AtRing(picture, figure.radius, 0)[3], 0.9);
  ExpectMatches(picture, figure, kTolerance);
}

TEST_F(HaloEdgeCases, CapsulesWiderThanTheyAreLongAreLeftOut) {
  HaloSpectrumFigure figure = Segments(1, 1);
  figure.step_num = 2;
  figure.gap_degree = 10;
  ExpectNoShape(figure);
}

TEST_F(HaloEdgeCases, OnlySegmentWithoutGapIsAWholeDisc) {
  HaloSpectrumFigure figure = Segments(0, 0);
  figure.step_num = 1;
  figure.gap_degree = 0;
  figure.spectrum = {1.0f};
  const Picture picture = DrawFloats(figure);
  for (int degrees = 0; degrees < 360; degrees += 15) {
    EXPECT_GT(AtRing(picture, figure.radius * 0.8, degrees)[3], 0.9) << degrees;
  }
  EXPECT_LT(AtRing(picture, figure.radius * 1.3, 45)[3], 0.1);
}

TEST_F(HaloEdgeCases, RayAlongThePlaneLooksAtTheWholeTrace) {
  // At this tilt the camera stands exactly in the plane: the rays of the middle row lie in it.
  HaloGeometryFigure figure = Geometry(1);
  figure.inclination_degree_x = -90;
  figure.ECG_line_width = 1;
  const Picture picture = DrawFigure(*geometry_, figure, 121, 81, GL_RGBA32F);
  EXPECT_GT(picture.At(60, 40)[3], 0.9);
  ExpectMatches(picture, figure, kTolerance);
}

TEST_F(HaloEdgeCases, EveryTiltStaysNumbers) {
  for (const int tilt : {0, 1, 45, 89, 90, 91, 180, 270, 360, -90, -180, 123456789}) {
    for (const int roll : {0, 90, -180, 77}) {
      auto turn = [&](auto figure) {
        figure.inclination_degree_x = tilt;
        figure.inclination_degree_z = roll;
        figure.single_color = 0;
        return figure;
      };
      for (int kind = 0; kind < 3; ++kind) ExpectNumbers(turn(Geometry(kind)));
      ExpectNumbers(turn(Segments(2, 1)));
    }
  }
}

TEST_F(HaloEdgeCases, ExtremeParametersStayNumbers) {
  const auto push = [](auto& figure, float extreme) {
    figure.single_color = 0;
    figure.use_gradient_color = extreme > 1e20f;
    figure.intensity = figure.glow_intensity = extreme;
    figure.rotate_speed = figure.time_second = extreme;
    figure.position_x = extreme;
  };
  for (const float extreme : {0.0f, -1e9f, 1e9f, 1e30f}) {
    for (auto figure : EveryGeometry()) {
      push(figure, extreme);
      figure.point_size = figure.ECG_line_width = extreme;
      figure.pulse_width = figure.pulse_line_width = extreme;
      ExpectNumbers(figure);
      figure.radius = extreme;
      ExpectNumbers(figure);
    }
    for (auto figure : EverySegments()) {
      push(figure, extreme);
      figure.gap_degree = figure.stroke_width = extreme;
      ExpectNumbers(figure);
      figure.radius = extreme;
      ExpectNumbers(figure);
    }
  }
}

TEST_F(HaloEdgeCases, HugeCountsComeToAnEnd) {
  for (auto figure : EveryGeometry()) {
    figure.point_count = figure.ECG_count = figure.pulse_count = 2000000000;
    ExpectNumbers(figure);
  }
  HaloSpectrumFigure figure = Segments(1, 0);
  figure.step_num = 2000000000;
  ExpectNumbers(figure);
}

TEST_F(HaloEdgeCases, FirstSegmentIsAtTheTopOfThePicture) {
  HaloSpectrumFigure figure = Segments(1, 0);
  figure.step_num = 4;
  figure.gap_degree = 80;
  const Picture picture = DrawFloats(figure);
  EXPECT_GT(picture.At(kWidth / 2, kHeight / 10)[3], 0.9);
  EXPECT_LT(picture.At(kWidth / 4, kHeight / 4)[3], 0.5);
}

TEST_F(HaloEdgeCases, PositionOfFiftyPercentIsTheMiddleAndMoreIsFurtherDown) {
  HaloSpectrumFigure figure = Segments(0, 0);
  figure.radius = 1;
  figure.spectrum = {1.0f};
  EXPECT_GT(DrawFloats(figure).At(kWidth / 2 - 1, kHeight / 2 - 3)[3], 0.9);
  figure.position_y = 70;  // two fifths of a picture further
  const Picture lower = DrawFloats(figure);
  EXPECT_LT(lower.At(kWidth / 2 - 1, kHeight / 2 - 3)[3], 0.1);
  EXPECT_GT(lower.At(kWidth / 2 - 1, kHeight * 9 / 10 - 3)[3], 0.9);
}

TEST_F(HaloEdgeCases, TurnOfSegmentsWrapsAt360Radians) {
  HaloSpectrumFigure figure = Segments(1, 0);
  figure.step_num = 5;
  figure.gap_degree = 40;
  figure.rotate_speed = 1;
  figure.time_second = 361;
  HaloSpectrumFigure wrapped = figure;
  wrapped.time_second = 1;
  EXPECT_LT(LargestDifference(DrawFloats(figure), DrawFloats(wrapped)), 1e-6);
  HaloSpectrumFigure full_turns = figure;
  full_turns.time_second = static_cast<float>(361 - 57 * 2 * kPi);
  EXPECT_GT(LargestDifference(DrawFloats(figure), DrawFloats(full_turns)), 0.5);
}

TEST_F(HaloEdgeCases, TurnOfOtherFiguresWrapsAtAFullTurn) {
  HaloGeometryFigure figure = Geometry(0);
  figure.point_count = 5;
  figure.rotate_speed = 1;
  figure.time_second = 361;
  HaloGeometryFigure full_turns = figure;
  full_turns.time_second = static_cast<float>(361 - 57 * 2 * kPi);
  EXPECT_LT(LargestDifference(DrawFloats(figure), DrawFloats(full_turns)), 0.02);
}

TEST_F(HaloEdgeCases, TopOfTheSpectrumIsEasedIntoItsBottom) {
  // Nothing but the lowest frequency sounds; the topmost item borrows it.
  HaloSpectrumFigure figure = Segments(1, 0);
  figure.spectrum = std::vector<float>(64, 0.0f);
  figure.spectrum[0] = figure.spectrum[1] = 1;
  figure.step_num = 36;
  figure.gap_degree = 2;
  const Picture picture = DrawFloats(figure);
  EXPECT_GT(AtRing(picture, figure.radius + 1, 350)[3], 0.9);
  EXPECT_LT(AtRing(picture, figure.radius + 1, 180)[3], 0.1);
}

TEST_F(HaloEdgeCases, LevelOfASegmentIsNotWrappedRoundTheRing) {
  // The first segment's half before the start is looked at as the one behind the last.
  HaloSpectrumFigure figure = Segments(1, 0);
  figure.spectrum = std::vector<float>(64, 0.0f);
  figure.spectrum[0] = figure.spectrum[1] = 1;
  figure.step_num = 6;
  figure.gap_degree = 5;
  const Picture picture = DrawFloats(figure);
  EXPECT_GT(AtRing(picture, figure.radius + 1, 15)[3], 0.9);
  EXPECT_LT(AtRing(picture, figure.radius + 1, -15)[3], 0.1);
}

TEST_F(HaloEdgeCases, GradientOfPointsBeginsAtTheFirstPointsEdge) {
  HaloGeometryFigure figure = Geometry(0);
  figure.spectrum = {0.0f};
  figure.single_color = 0;
  figure.use_gradient_color = true;
  figure.point_size = 2;  // half a unit to each side, 9 degrees
  const Picture picture = DrawFloats(figure);
  EXPECT_GT(AtRing(picture, figure.radius, -20)[2], 0.98);
  EXPECT_GT(AtRing(picture, figure.radius, -14)[0], 0.98);
  EXPECT_GT(AtRing(picture, figure.radius, 0)[0], 0.94);
}

TEST_F(HaloEdgeCases, UniformsOfOtherShadersAreIgnored) {
  for (const std::string_view name : {kHaloGeometryShader, kHaloSpectrumShader}) {
    const auto shader =
        GL::Shader::Compile(GL::kDefaultVertexSource, std::string(*FindBuiltinShader(name)), {});
    ASSERT_NE(shader, nullptr);
    glUseProgram(shader->name());
    shader->SetFloat("clrcle_gap_size", 1.0f);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    EXPECT_GE(shader->UniformLocation("radius"), 0);
  }
}

TEST_F(HaloEdgeCases, PureRedIsWrittenAsPureBlueWhereColorsAreExchanged) {
  const auto exchanging = Compile(kHaloSpectrumShader, "#define GOOGLE_ANGLE\n");
  HaloSpectrumFigure figure = Segments(1, 0);
  figure.color_r = 1;
  figure.color_g = figure.color_b = 0;
  const Picture picture = DrawFigure(*exchanging, figure, kWidth, kHeight, GL_RGBA8);
  for (const Pixel& pixel : picture.pixels) {
    ASSERT_EQ(pixel[0], 0);
    ASSERT_EQ(pixel[2], 1);
  }
  for (const Pixel& pixel : DrawBytes(figure).pixels) ASSERT_EQ(pixel[0], 1);
}

TEST_F(HaloEdgeCases, GradientIsExchangedTwiceAndSoKeepsItsColors) {
  const auto exchanging = Compile(kHaloGeometryShader, "#define GOOGLE_ANGLE\n");
  HaloGeometryFigure figure = Geometry(2);
  UseGradient(figure);
  const Picture exchanged = DrawFigure(*exchanging, figure, kWidth, kHeight, GL_RGBA32F);
  EXPECT_EQ(LargestDifference(DrawFloats(figure), exchanged), 0);
}

}  // namespace
}  // namespace krv::test
