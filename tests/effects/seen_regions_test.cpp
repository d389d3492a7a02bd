#include "effects/seen_regions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace krv {

void PrintTo(const TargetRegion& region, std::ostream* out) {
  *out << region.x << "," << region.y << " " << region.width << "x" << region.height;
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

class SeenRegionsTest : public testing::Test {
 protected:
  SeenRegionsTest() { seen_.Start(200, 150); }

  std::vector<TargetRegion> Taken() {
    std::vector<TargetRegion> regions;
    seen_.Take(regions);
    return regions;
  }

  SeenRegions seen_;
};

TEST_F(SeenRegionsTest, OfNothingAreNone) { EXPECT_THAT(Taken(), IsEmpty()); }

TEST_F(SeenRegionsTest, AreTheTilesThatABoxTouches) {
  seen_.Add(70, 10, 75, 20);
  EXPECT_THAT(Taken(), ElementsAre(TargetRegion{64, 0, 64, 64}));
}

TEST_F(SeenRegionsTest, EndWithTheTarget) {
  seen_.Add(130, 140, 500, 500);
  EXPECT_THAT(Taken(), ElementsAre(TargetRegion{128, 128, 72, 22}));
}

TEST_F(SeenRegionsTest, OfOneHeightSideBySideAreOne) {
  seen_.Add(0, 0, 199, 10);
  EXPECT_THAT(Taken(), ElementsAre(TargetRegion{0, 0, 200, 64}));
}

TEST_F(SeenRegionsTest, OfSeveralHeightsStandBesideEachOther) {
  seen_.Add(0, 0, 10, 10);
  seen_.Add(20, 100, 30, 110);
  seen_.Add(70, 0, 80, 10);
  EXPECT_THAT(Taken(), ElementsAre(TargetRegion{0, 0, 64, 128}, TargetRegion{64, 0, 64, 64}));
}

TEST_F(SeenRegionsTest, OfBoxesOutsideAreNone) {
  seen_.Add(-50, 0, -1, 10);
  seen_.Add(201, 0, 300, 10);
  seen_.Add(0, -20, 10, -5);
  seen_.Add(0, 151, 10, 160);
  EXPECT_THAT(Taken(), IsEmpty());
}

TEST_F(SeenRegionsTest, OfEndlessBoxesAreEverywhere) {
  seen_.Add(-kInfinity, -kInfinity, kInfinity, kInfinity);
  EXPECT_THAT(Taken(), ElementsAre(TargetRegion{0, 0, 200, 150}));
}

TEST_F(SeenRegionsTest, OfWhatIsNoBoxAreEverywhere) {
  seen_.Add(kNan, 0, 10, 10);
  EXPECT_THAT(Taken(), ElementsAre(TargetRegion{0, 0, 200, 150}));
}

TEST_F(SeenRegionsTest, StartAnew) {
  seen_.Add(0, 0, 199, 149);
  seen_.Start(64, 64);
  seen_.Add(1, 1, 2, 2);
  EXPECT_THAT(Taken(), ElementsAre(TargetRegion{0, 0, 64, 64}));
}

}  // namespace
}  // namespace krv
