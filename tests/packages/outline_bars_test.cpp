// The package of bars along the outline of the frame itself: a logo, or the edge of a picture.
#include <cmath>

#include "packages/package_fixture.h"

namespace krv::test {
namespace {

constexpr int kLogoRadius = 40;  // pixels

class OutlineBars : public PackageTest {
 protected:
  using PackageTest::Render;
  host::Picture Render(const Values& values) { return Render(session_.get(), values); }

  double FromMiddle(int x, int y) {
    const host::Picture& picture = scene_.picture();
    return std::hypot(x + 0.5 - picture.width() / 2.0, y + 0.5 - picture.height() / 2.0);
  }

  // Nothing but a disc in the middle.
  void MakeLogo() {
    host::Picture& picture = scene_.picture();
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) {
        if (FromMiddle(x, y) > kLogoRadius) std::fill_n(picture.Pixel(x, y), 4, uint8_t{0});
      }
    }
  }

  std::unique_ptr<host::EffectSession> session_ =
      Open(KRV_PACKAGES "/mask_bars", "audio_visualization_mask_shape_bars");
};

TEST_F(OutlineBars, EveryParameterChangesThePicture) {
  MakeLogo();
  ExpectEveryParameterShows(session_.get(), WithFamilyChanges({{"point_size", 0.6f, {}},
                                                               {"point_gap", 0.5f, {}},
                                                               {"max_length", 20, {}},
                                                               {"behind", false, {}},
                                                               {"audio_mirror", false, {}}}));
}

TEST_F(OutlineBars, StandAroundALogoThatStaysAsItIs) {
  MakeLogo();
  const host::Picture picture = Render({{"max_length", 30}});
  int around = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const double from_middle = FromMiddle(x, y);
      const uint8_t* pixel = picture.Pixel(x, y);
      if (from_middle < kLogoRadius - 1) {
        EXPECT_EQ(std::memcmp(pixel, scene_.picture().Pixel(x, y), 4), 0) << x << ", " << y;
      } else if (from_middle < kLogoRadius + 10) {
        around += pixel[3] > 200;
      } else if (from_middle > kLogoRadius + 50) {
        EXPECT_EQ(pixel[3], 0) << x << ", " << y;
      }
    }
  }
  EXPECT_GT(around, 300);
}

// A frame that is transparent has nothing to mix with, so the bars keep their own alpha.
TEST_F(OutlineBars, AlphaAroundALogoIsTheBarsOwn) {
  MakeLogo();
  const auto most_alpha = [this](float alpha) {
    const host::Picture picture = Render({{"alpha", alpha}, {"glow", 0}});
    int most = 0;
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) {
        if (FromMiddle(x, y) > kLogoRadius + 2) most = std::max<int>(most, picture.Pixel(x, y)[3]);
      }
    }
    return most;
  };
  EXPECT_GT(most_alpha(100), 240);
  EXPECT_NEAR(most_alpha(50), most_alpha(100) / 2, 2);
}

TEST_F(OutlineBars, PointInwardsFromTheEdgeOfAPicture) {
  const host::Picture picture = Render({{"max_length", 60}, {"glow", 0}});
  const host::Picture& input = scene_.picture();
  EXPECT_NE(std::memcmp(picture.Row(1), input.Row(1), static_cast<size_t>(input.stride())), 0);
  const int middle = input.height() / 2;
  EXPECT_EQ(std::memcmp(picture.Pixel(40, middle), input.Pixel(40, middle),
                        static_cast<size_t>(input.width() - 80) * 4),
            0);
}

TEST_F(OutlineBars, BlackPlacesInAPictureAreNoHoles) {
  const Values values = {{"max_length", 20}};
  const host::Picture before = Render(values);
  host::Picture& input = scene_.picture();
  for (int y = 80; y < 100; ++y) std::memset(input.Pixel(150, y), 0, 20 * 4);
  for (int y = 80; y < 100; ++y) {
    for (int x = 150; x < 170; ++x) input.Pixel(x, y)[3] = 255;
  }
  const host::Picture after = Render(values);
  for (int y = 0; y < 80; ++y) {
    EXPECT_EQ(std::memcmp(before.Row(y), after.Row(y), static_cast<size_t>(before.width()) * 4), 0)
        << y;
  }
  EXPECT_EQ(std::memcmp(after.Pixel(150, 90), input.Pixel(150, 90), 20 * 4), 0);
}

}  // namespace
}  // namespace krv::test
