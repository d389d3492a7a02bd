// The package that draws a halo behind a person.
#include "packages/package_fixture.h"

namespace krv::test {
namespace {

class PersonHalo : public PackageTest {
 protected:
  using PackageTest::Render;
  host::Picture Render(const Values& values) { return Render(session_.get(), values); }

  std::unique_ptr<host::EffectSession> session_ =
      Open(KRV_PACKAGES "/person_halo", "audio_visualization_person_halo");
};

TEST_F(PersonHalo, EveryParameterChangesThePicture) {
  ExpectEveryParameterShows(session_.get(),
                            WithFamilyChanges({{"radius", 60.0f, {}},
                                               {"reach", 20.0f, {}},
                                               {"line_width", 6.0f, {}},
                                               {"spectrum_count", 30, {}},
                                               {"spectrum_width", 0.2f, {}},
                                               {"feather", 4.0f, {}},
                                               {"position_x", 20.0f, {}},
                                               {"position_y", 60.0f, {}},
                                               {"rotate_direction", 1, {{"rotate_speed", 0.5f}}},
                                               {"rotate_speed", 1.0f, {}},
                                               {"audio_mirror", false, {}}}));
}

// The ring runs over the person's body and beside it.
TEST_F(PersonHalo, ThePersonHidesTheHalo) {
  uint8_t* person = nullptr;
  int32_t width = 0;
  int32_t height = 0;
  int32_t stride = 0;
  ASSERT_EQ(scene_.GetMask(&person, &width, &height, &stride), 1);
  const auto is_person = [&](int x, int y) { return person[y * stride + 4 * x + 3] == 255; };
  const Values over_the_body = {{"radius", 80.0f}, {"position_y", 50.0f}};
  const host::Picture picture = Render(over_the_body);
  constexpr int kEdge = 4;  // pixels
  int hidden = 0;
  int shown = 0;
  for (int y = kEdge; y < height - kEdge; ++y) {
    for (int x = kEdge; x < width - kEdge; ++x) {
      const bool changed = std::memcmp(picture.Pixel(x, y), scene_.picture().Pixel(x, y), 4) != 0;
      const bool well_within = is_person(x - kEdge, y) && is_person(x + kEdge, y) &&
                               is_person(x, y - kEdge) && is_person(x, y + kEdge);
      if (well_within) {
        EXPECT_FALSE(changed) << x << ", " << y;
        ++hidden;
      } else {
        shown += changed;
      }
    }
  }
  EXPECT_GT(hidden, 2000);
  EXPECT_GT(shown, 2000);
}

TEST_F(PersonHalo, AWiderFeatherLetsMoreLightOntoThePerson) {
  const auto light = [this](float feather) {
    const host::Picture picture = Render({{"feather", feather}, {"radius", 60.0f}});
    double sum = 0;
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) sum += picture.Pixel(x, y)[1];
    }
    return sum;
  };
  EXPECT_GT(light(4.0f), light(0.5f));
}

TEST_F(PersonHalo, WithoutSizeNothingIsDrawn) {
  EXPECT_TRUE(Same(Render({{"radius", 0.0f}}), scene_.picture()));
}

}  // namespace
}  // namespace krv::test
