// The time that shaders are given.
#include <gtest/gtest.h>

#include "effects/effect_fixture.h"

namespace krv::test {
namespace {

class Timing : public EffectTest {
 protected:
  float TimeAt(int64_t index, int64_t numerator, int64_t denominator) {
    context_.index = index;
    context_.rate_numerator = numerator;
    context_.rate_denominator = denominator;
    return ValueOf("vec4(time_second)", "uniform float time_second;")[0];
  }
};

TEST_F(Timing, IsTheFrameIndexOverTheRate) { EXPECT_EQ(TimeAt(30, 25, 1), 30.0F / 25.0F); }

TEST_F(Timing, BrokenRateCountsAsItsWholePart) { EXPECT_EQ(TimeAt(29, 30000, 1001), 1.0F); }

TEST_F(Timing, NegativeFrameIsBeforeZero) { EXPECT_EQ(TimeAt(-50, 25, 1), -2.0F); }

TEST_F(Timing, MissingRateCountsAsOneFramePerSecond) {
  EXPECT_EQ(TimeAt(7, 25, 0), 7.0F);
  EXPECT_EQ(TimeAt(7, 0, 1), 7.0F);
  EXPECT_EQ(TimeAt(7, -25, 1), 7.0F);
}

TEST_F(Timing, IsTheSameInTheBlend) {
  context_.index = 50;
  Package package = PassPackage({Fragment("gl_FragColor = vec4(0.0);")});
  package.description["blend_script"] = "blend.glsl";
  package.files["blend.glsl"] =
      Fragment("gl_FragColor = vec4(time_second);", "uniform float time_second;");
  EXPECT_EQ(Shown(*host_.Make(package))[0], 2.0F);
}

}  // namespace
}  // namespace krv::test
