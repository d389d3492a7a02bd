// Points along one outline, against cases worked out by hand.
#include "effects/outline_walk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace krv::test {
namespace {

using testing::ElementsAre;
using Point = cv::Point2f;

OutlinePoints Walk(const Outline& outline, int spacing) {
  OutlinePoints result;
  const size_t count = WalkOutline(outline, spacing, result);
  EXPECT_EQ(count, result.points.size());
  EXPECT_EQ(count, result.normals.size());
  return result;
}

MATCHER_P2(Near, x, y, "") { return std::hypot(arg.x - x, arg.y - y) < 1e-4; }

// As OpenCV gives the outline of a rectangle: down its left side first.
Outline Square(int side) {
  return {{10, 10}, {10, 10 + side}, {10 + side, 10 + side}, {10 + side, 10}};
}

TEST(OutlineWalk, PointsStartOnTheFirstCornerAndRunOnAcrossCorners) {
  // 40 pixels round: 12 apart, the third point 4 beyond the second corner.
  EXPECT_THAT(Walk(Square(10), 12).points,
              ElementsAre(Point(10, 10), Point(12, 20), Point(20, 16), Point(14, 10)));
}

TEST(OutlineWalk, APointThatFallsOnTheFirstCornerAgainIsNotPlacedTwice) {
  EXPECT_THAT(Walk(Square(10), 10).points,
              ElementsAre(Point(10, 10), Point(10, 20), Point(20, 20), Point(20, 10)));
  EXPECT_THAT(Walk(Square(10), 20).points, ElementsAre(Point(10, 10), Point(20, 20)));
}

TEST(OutlineWalk, ASpacingBeyondTheOutlineLeavesOnePoint) {
  for (const int spacing : {40, 41, 1 << 20}) {
    const OutlinePoints result = Walk(Square(10), spacing);
    EXPECT_THAT(result.points, ElementsAre(Point(10, 10)));
    EXPECT_THAT(result.normals, ElementsAre(Point(1, 0)));
  }
}

TEST(OutlineWalk, OnePixelIsAPointThatLooksToTheRight) {
  const OutlinePoints result = Walk({{7, 9}}, 1);
  EXPECT_THAT(result.points, ElementsAre(Point(7, 9)));
  EXPECT_THAT(result.normals, ElementsAre(Point(1, 0)));
}

TEST(OutlineWalk, ALineIsWalkedThereAndBack) {
  // Its ends look along it, each side outwards. The way there runs downwards, its outside is left.
  const OutlinePoints result = Walk({{5, 2}, {5, 4}}, 1);
  EXPECT_THAT(result.points, ElementsAre(Point(5, 2), Point(5, 3), Point(5, 4), Point(5, 3)));
  EXPECT_THAT(result.normals, ElementsAre(Near(0, -1), Near(-1, 0), Near(0, 1), Near(1, 0)));
}

TEST(OutlineWalk, TwoPixelsLookAwayFromEachOther) {
  const OutlinePoints result = Walk({{5, 2}, {6, 2}}, 1);
  EXPECT_THAT(result.points, ElementsAre(Point(5, 2), Point(6, 2)));
  EXPECT_THAT(result.normals, ElementsAre(Near(-1, 0), Near(1, 0)));
}

TEST(OutlineWalk, NormalsComeFromTheTwoNeighboursAndPointOut) {
  // Corners between two sides look along the diagonal, points within a side straight out.
  const float diagonal = std::sqrt(0.5f);
  EXPECT_THAT(
      Walk(Square(10), 5).normals,
      ElementsAre(Near(-diagonal, -diagonal), Near(-1, 0), Near(-diagonal, diagonal), Near(0, 1),
                  Near(diagonal, diagonal), Near(1, 0), Near(diagonal, -diagonal), Near(0, -1)));
}

TEST(OutlineWalk, SlantedSegmentsAreMeasuredAlongThemselves) {
  // A triangle of sides 3, 4 and 5.
  EXPECT_THAT(Walk({{0, 0}, {0, 3}, {4, 3}}, 6).points, ElementsAre(Near(0, 0), Near(3, 3)));
  EXPECT_THAT(
      Walk({{0, 3}, {4, 0}, {0, 0}}, 2).points,
      ElementsAre(Near(0, 3), Near(1.6, 1.8), Near(3.2, 0.6), Near(3, 0), Near(1, 0), Near(0, 1)));
}

TEST(OutlineWalk, CornersOnOnePlaceAddNothing) {
  EXPECT_THAT(Walk({{3, 3}, {3, 3}, {3, 3}}, 1).points, ElementsAre(Point(3, 3)));
  EXPECT_THAT(Walk({{0, 0}, {0, 0}, {0, 2}, {0, 2}}, 2).points,
              ElementsAre(Point(0, 0), Point(0, 2)));
}

TEST(OutlineWalk, EveryPointIsTheSpacingFromTheOneBeforeOnALongStraightLine) {
  const OutlinePoints result = Walk({{0, 0}, {0, 30000}, {1, 30000}}, 7);
  ASSERT_EQ(result.points.size(), 8572U);  // 60001 pixels round
  for (size_t i = 0; i < 4000; ++i) {
    ASSERT_THAT(result.points[i], Near(0, static_cast<float>(7 * i))) << i;
  }
}

}  // namespace
}  // namespace krv::test
