// What the flat geometry shader does at the ends of its ranges and beyond them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "shaders/builtin_shader_test.h"
#include "shaders/expect_matches.h"
#include "shaders/flat_canvas.h"
#include "shaders/flat_reference.h"

namespace krv::test {
namespace {

constexpr int kWidth = 120;
constexpr int kHeight = 68;
constexpr double kTolerance = 2e-3;

class FlatEdgeCases : public FlatShaderTest<::testing::Test> {
 protected:
  Picture DrawBytes(const FlatFigure& figure) {
    return DrawFigure(program(), figure, kWidth, kHeight, GL_RGBA8);
  }

  Picture DrawFloats(const FlatFigure& figure) {
    return DrawFigure(program(), figure, kWidth, kHeight, GL_RGBA32F);
  }

  // No figure anywhere: only the coverage that the largest distance leaves.
  void ExpectNoShape(const FlatFigure& figure) {
    const Picture picture = DrawFloats(figure);
    for (const Pixel& pixel : picture.pixels) ASSERT_LT(pixel[3], 1e-6);
    ExpectMatches(picture, figure, kTolerance);
  }
};

// One bar over the whole rectangle.
FlatFigure FullBar() {
  FlatFigure figure;
  figure.spectrum_count = 1;
  figure.spectrum_width = 50;
  figure.spectrum = {1.0f};
  return figure;
}

TEST_F(FlatEdgeCases, ScaleOfZeroGivesOpaqueBlackEverywhere) {
  FlatFigure narrow = FullBar();
  narrow.scale_x = 0;
  FlatFigure low = FullBar();
  low.scale_y = 0;
  low.glow = 1;
  for (const FlatFigure& figure : {narrow, low}) {
    for (const Pixel& pixel : DrawBytes(figure).pixels) ASSERT_EQ(pixel, (Pixel{0, 0, 0, 1}));
  }
}

TEST_F(FlatEdgeCases, FullAlphaInsideAShapeIsJustBelowOpaque) {
  FlatFigure figure = FullBar();
  figure.alpha = 100;
  const Picture bytes = DrawBytes(figure);
  EXPECT_DOUBLE_EQ(std::round(bytes.At(kWidth / 2, kHeight / 2)[3] * 255), 252);
  EXPECT_FLOAT_EQ(DrawFloats(figure).At(kWidth / 2, kHeight / 2)[3], 0.99f);
}

TEST_F(FlatEdgeCases, AlphaAboveItsRangeStaysBelowOpaque) {
  FlatFigure figure = FullBar();
  figure.alpha = 900;
  for (const Pixel& pixel : DrawFloats(figure).pixels) ASSERT_LE(pixel[3], 0.99f);
}

TEST_F(FlatEdgeCases, QuietBarsFallToTheirMinimumHeight) {
  FlatFigure figure = FullBar();
  figure.spectrum_minimum_height = 25;
  figure.audio_left_db = figure.audio_db_min;
  const Picture picture = DrawFloats(figure);
  // The base is the picture's bottom edge, its largest y.
  EXPECT_GT(picture.At(kWidth / 2, kHeight * 3 / 4 + 2)[3], 0.98);
  EXPECT_LT(picture.At(kWidth / 2, kHeight * 3 / 4 - 2)[3], 0.05);
  ExpectMatches(picture, figure, kTolerance);
}

TEST_F(FlatEdgeCases, BelowTheLowestLevelNothingMoves) {
  for (int kind = 0; kind < 6; ++kind) {
    for (int direction = 0; direction < 2; ++direction) {
      FlatFigure quiet;
      quiet.geometry_type = kind;
      quiet.direction = direction;
      quiet.audio_left_db = quiet.audio_db_min;
      FlatFigure silent = quiet;
      silent.spectrum = {0.0f};
      FlatFigure below = quiet;
      below.audio_left_db = 0;
      EXPECT_EQ(LargestDifference(DrawFloats(quiet), DrawFloats(silent)), 0) << kind;
      EXPECT_EQ(LargestDifference(DrawFloats(quiet), DrawFloats(below)), 0) << kind;
    }
  }
}

TEST_F(FlatEdgeCases, QuietPointsLieOnTheBaseLine) {
  FlatFigure figure;
  figure.geometry_type = 1;
  figure.point_count = 1;
  figure.audio_left_db = figure.audio_db_min;
  const Picture picture = DrawFloats(figure);
  EXPECT_GT(picture.At(kWidth / 2, kHeight - 1)[3], 0.98);
  EXPECT_LT(picture.At(kWidth / 2, kHeight / 2)[3], 0.01);
}

TEST_F(FlatEdgeCases, GradientWithFewerThanTwoStopsIsBlack) {
  for (const int count : {1, 0, -3}) {
    FlatFigure figure = FullBar();
    figure.single_color = 0;
    figure.use_gradient_color = true;
    figure.gradient = {{1, 1, 1, 0.5f}};
    figure.gradient_color_count = count;
    for (const Pixel& pixel : DrawFloats(figure).pixels) {
      ASSERT_EQ(pixel[0] + pixel[1] + pixel[2], 0) << count;
    }
  }
}

TEST_F(FlatEdgeCases, BothStopsAtOnePlaceStayNumbers) {
  FlatFigure figure = FullBar();
  figure.single_color = 0;
  figure.use_gradient_color = true;
  figure.gradient = {{1, 0, 0, 0}, {0, 1, 0, 0}};
  ExpectMatches(DrawFloats(figure), figure, kTolerance);
}

TEST_F(FlatEdgeCases, SilentRectangleColumnsShowOneBlock) {
  FlatFigure figure;
  figure.geometry_type = 5;
  figure.rectangle_column_count = 1;
  figure.spectrum = {0.0f};
  const Picture picture = DrawFloats(figure);
  EXPECT_GT(picture.At(kWidth / 2, kHeight - 1)[3], 0.98);
  EXPECT_LT(picture.At(kWidth / 2, kHeight - 12)[3], 0.05);
  ExpectMatches(picture, figure, kTolerance);
}

TEST_F(FlatEdgeCases, CountsOfZeroOrBelowDrawNoShape) {
  for (const int count : {0, -5}) {
    for (int kind = 0; kind < 6; ++kind) {
      FlatFigure figure;
      figure.geometry_type = kind;
      figure.spectrum_count = figure.point_count = figure.line_count = count;
      figure.pulse_count = figure.circle_column_count = figure.rectangle_column_count = count;
      ExpectNoShape(figure);
    }
  }
}

TEST_F(FlatEdgeCases, ColumnsWithoutPitchDrawNoShape) {
  for (const int kind : {4, 5}) {
    FlatFigure figure;
    figure.geometry_type = kind;
    figure.circle_size = figure.rectangle_height = 0;
    for (const float gap : {0.0f, -2.0f}) {
      figure.clrcle_gap_size = figure.rectangle_gap_size = gap;
      ExpectNoShape(figure);
    }
  }
}

TEST_F(FlatEdgeCases, UnknownKindsDrawNoShape) {
  for (const int kind : {6, -1, 1000000}) {
    FlatFigure figure;
    figure.geometry_type = kind;
    ExpectNoShape(figure);
  }
}

TEST_F(FlatEdgeCases, EqualLevelLimitsActAsAStep) {
  FlatFigure figure = FullBar();
  figure.spectrum = {0.5f};
  figure.audio_db_min = figure.audio_db_max = 80;
  for (const float level : {79.0f, 80.0f, 81.0f}) {
    figure.audio_left_db = level;
    const Picture picture = DrawFloats(figure);
    const bool stands = picture.At(kWidth / 2, kHeight * 3 / 4)[3] > 0.5;
    EXPECT_EQ(stands, level > 80) << level;
    ExpectMatches(picture, figure, kTolerance);
  }
}

TEST_F(FlatEdgeCases, RectangleSeenOnEdgeStaysNumbers) {
  for (int kind = 0; kind < 6; ++kind) {
    FlatFigure figure;
    figure.geometry_type = kind;
    figure.single_color = 0;
    figure.direction = 1;
    figure.rotate_y = 90;
    // An odd width puts a column of pixels exactly on the edge.
    const Picture picture = DrawFigure(program(), figure, 121, kHeight, GL_RGBA32F);
    for (const Pixel& pixel : picture.pixels) {
      for (const double channel : pixel) ASSERT_TRUE(std::isfinite(channel)) << kind;
    }
  }
}

TEST_F(FlatEdgeCases, FrameTooNarrowForATenthOfAspectStaysNumbers) {
  for (int kind = 0; kind < 6; ++kind) {
    FlatFigure figure;
    figure.geometry_type = kind;
    figure.single_color = 0;
    for (const Pixel& pixel : DrawFigure(program(), figure, 6, 70, GL_RGBA32F).pixels) {
      for (const double channel : pixel) ASSERT_TRUE(std::isfinite(channel)) << kind;
    }
  }
}

TEST_F(FlatEdgeCases, ExtremeParametersStayNumbers) {
  for (int kind = 0; kind < 6; ++kind) {
    for (const float extreme : {0.0f, -1e9f, 1e9f, 1e30f}) {
      FlatFigure figure;
      figure.geometry_type = kind;
      figure.single_color = 0;
      figure.spectrum_width = figure.spectrum_round = figure.point_size = extreme;
      figure.line_width = figure.circle_size = figure.rectangle_width = extreme;
      figure.rectangle_height = figure.pulse_width = figure.pulse_line_width = extreme;
      figure.intensity = figure.glow_intensity = figure.offset_x = extreme;
      for (const Pixel& pixel : DrawFloats(figure).pixels) {
        for (const double channel : pixel) ASSERT_TRUE(std::isfinite(channel)) << kind;
      }
    }
  }
}

TEST_F(FlatEdgeCases, PulsesOfAnyWidthComeToAnEnd) {
  for (const float width : {-1e30f, 1e5f, 1e30f}) {
    FlatFigure figure;
    figure.geometry_type = 3;
    figure.pulse_width = width;
    for (const Pixel& pixel : DrawFigure(program(), figure, 16, 9, GL_RGBA32F).pixels) {
      for (const double channel : pixel) ASSERT_TRUE(std::isfinite(channel)) << width;
    }
  }
}

TEST_F(FlatEdgeCases, BarsGrowFromTheBottomOfThePicture) {
  FlatFigure figure = FullBar();
  figure.spectrum = {0.5f};
  const Picture picture = DrawFloats(figure);
  EXPECT_GT(picture.At(kWidth / 2, kHeight - 1)[3], 0.98);
  EXPECT_LT(picture.At(kWidth / 2, 0)[3], 0.01);
}

TEST_F(FlatEdgeCases, PositionAboveTheMiddleMovesTheFigureUpThePicture) {
  FlatFigure figure = FullBar();
  figure.spectrum = {0.0f};
  figure.spectrum_minimum_height = 20;
  figure.position_y = 75;  // half a picture up
  const Picture picture = DrawFloats(figure);
  EXPECT_GT(picture.At(kWidth / 2, kHeight / 2 - 3)[3], 0.98);
  EXPECT_LT(picture.At(kWidth / 2, kHeight / 2 + 3)[3], 0.05);
}

TEST_F(FlatEdgeCases, PulseSamplesAreExactlyFive) {
  // The outermost samples decide where a thick line ends beside a steep flank; any sample lost to
  // rounding shows there.
  FlatFigure figure;
  figure.geometry_type = 3;
  figure.pulse_count = 3;
  figure.pulse_width = 0.4f;
  for (const float width : {0.7f, 1.0f, 3.3f, 10.0f}) {
    figure.pulse_line_width = width;
    ExpectMatches(DrawFloats(figure), figure, kTolerance);
  }
}

class FlatAngle : public FlatEdgeCases {
 protected:
  void SetUp() override {
    FlatEdgeCases::SetUp();
    std::string source = Source();
    source.insert(source.find('\n') + 1, "#define GOOGLE_ANGLE\n");
    exchanging_ = std::make_unique<ShaderProgram>(source);
    ASSERT_TRUE(exchanging_->ok()) << exchanging_->log();
  }

  std::unique_ptr<ShaderProgram> exchanging_;
};

TEST_F(FlatAngle, PureRedIsWrittenAsPureBlue) {
  FlatFigure figure = FullBar();
  figure.color_r = 1;
  figure.color_g = figure.color_b = 0;
  const Picture picture = DrawFigure(*exchanging_, figure, kWidth, kHeight, GL_RGBA8);
  const Pixel& pixel = picture.At(kWidth / 2, kHeight / 2);
  EXPECT_EQ(pixel[0], 0);
  EXPECT_EQ(pixel[1], 0);
  EXPECT_EQ(pixel[2], 1);
  EXPECT_EQ(DrawBytes(figure).At(kWidth / 2, kHeight / 2)[0], 1);
}

TEST_F(FlatAngle, GradientIsExchangedTwiceAndSoKeepsItsColors) {
  FlatFigure figure = FullBar();
  figure.single_color = 0;
  figure.use_gradient_color = true;
  const Picture plain = DrawFloats(figure);
  const Picture exchanged = DrawFigure(*exchanging_, figure, kWidth, kHeight, GL_RGBA32F);
  EXPECT_EQ(LargestDifference(plain, exchanged), 0);
}

}  // namespace
}  // namespace krv::test
