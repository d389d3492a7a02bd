// The package that draws a solid through the camera of the 3-D effects.
#include "packages/package_fixture.h"

namespace krv::test {
namespace {

class CrystalStar : public PackageTest {
 protected:
  using PackageTest::Render;
  host::Picture Render(const Values& values) { return Render(session_.get(), values); }

  // The figure alone, without light around it, as the share of changed pixels in a part of the
  // picture.
  double ShareDrawn(Values values, double left, double right, double top, double bottom) {
    values.insert_or_assign("glow", 0);
    const host::Picture picture = Render(values);
    const host::Picture& input = scene_.picture();
    int drawn = 0;
    int all = 0;
    for (int y = static_cast<int>(top * input.height()); y < bottom * input.height(); ++y) {
      for (int x = static_cast<int>(left * input.width()); x < right * input.width(); ++x) {
        drawn += std::memcmp(picture.Pixel(x, y), input.Pixel(x, y), 4) != 0;
        ++all;
      }
    }
    return static_cast<double>(drawn) / all;
  }

  std::unique_ptr<host::EffectSession> session_ =
      Open(KRV_PACKAGES "/star_3d", "audio_visualization_3d_geometry");
};

TEST_F(CrystalStar, EveryParameterChangesThePicture) {
  ExpectEveryParameterShows(
      session_.get(), WithFamilyChanges({{"radius", 0.3f, {}},
                                         {"glass", 90.0f, {}},
                                         {"line_width", 2.0f, {}},
                                         {"spectrum_count", 24, {}},
                                         {"spectrum_width", 0.9f, {}},
                                         {"ring_radius", 0.4f, {}},
                                         {"position_x", 30.0f, {}},
                                         {"position_y", 30.0f, {}},
                                         {"inclination_degree_x", 50, {}},
                                         {"inclination_degree_z", 30, {}},
                                         {"rotate_direction", 1, {}},
                                         {"rotate_speed", 2.0f, {}},
                                         {"manual_rotate", 1, {}},
                                         {"manual_rotate_degree", 70.0f, {{"manual_rotate", 1}}}}));
}

// The blend draws with the package's vertex shader too, and without the camera.
TEST_F(CrystalStar, WithoutOpacityThePictureIsWholeAndUnchanged) {
  EXPECT_TRUE(Same(Render({{"alpha", 0.0f}}), scene_.picture()));
}

TEST_F(CrystalStar, AwayFromTheFigureThePictureStays) {
  EXPECT_GT(ShareDrawn({}, 0.4, 0.6, 0.35, 0.65), 0.9);
  EXPECT_EQ(ShareDrawn({}, 0, 1, 0, 0.05), 0);
  EXPECT_EQ(ShareDrawn({}, 0, 0.1, 0, 1), 0);
  EXPECT_EQ(ShareDrawn({}, 0.9, 1, 0, 1), 0);
}

TEST_F(CrystalStar, PositionCountsFromTheLeftAndFromAbove) {
  const Values star_alone = {{"spectrum_count", 0}, {"radius", 0.3f}};
  Values upper_left = star_alone;
  upper_left.merge(Values{{"position_x", 25.0f}, {"position_y", 25.0f}});
  EXPECT_GT(ShareDrawn(upper_left, 0, 0.5, 0, 0.5), 0.05);
  EXPECT_EQ(ShareDrawn(upper_left, 0.5, 1, 0, 1), 0);
  EXPECT_EQ(ShareDrawn(upper_left, 0, 1, 0.6, 1), 0);
}

TEST_F(CrystalStar, TheLoudSpikesAreLonger) {
  const double loud = ShareDrawn({{"spectrum_count", 0}}, 0, 1, 0, 1);
  const double quiet = ShareDrawn({{"spectrum_count", 0}, {"intensity", 0.0f}}, 0, 1, 0, 1);
  EXPECT_GT(loud, 1.2 * quiet);
}

TEST_F(CrystalStar, ValuesWithoutAnySizeDrawNoStar) {
  EXPECT_LT(
      ShareDrawn({{"radius", 0.0f}, {"ring_radius", 0.0f}, {"spectrum_width", 0.0f}}, 0, 1, 0, 1),
      0.001);
}

}  // namespace
}  // namespace krv::test
