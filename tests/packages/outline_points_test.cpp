// The package of points along a person's outline.
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "packages/package_fixture.h"
#include "support/scratch_folder.h"

namespace krv::test {
namespace {

using nlohmann::json;

const std::string kPackage = KRV_PACKAGES "/mask_points";

class OutlinePoints : public PackageTest {
 protected:
  using PackageTest::Render;
  host::Picture Render(const Values& values) { return Render(session_.get(), values); }

  std::unique_ptr<host::EffectSession> session_ = Open(kPackage, "audio_visualization_mask_shape");
};

TEST_F(OutlinePoints, EveryParameterChangesThePicture) {
  ExpectEveryParameterShows(
      session_.get(),
      {{"point_size", 0.6f, {}},
       {"point_gap", 0.5f, {}},
       {"max_length", 20, {}},
       {"behind", false, {}},
       {"alpha", 40.0f, {}},
       {"single_color", 1, {}},
       {"color", 255, {{"single_color", 1}}},
       {"color_speed", 0.4f, {}},
       {"use_gradient_color", true, {}},
       {"gradient_color", std::string("2,16711680,0;255,100"), {{"use_gradient_color", true}}},
       {"gradient_color_direction", 1, {{"use_gradient_color", true}}},
       {"glow", 0, {}},
       {"glow_intensity", 0.1f, {}},
       {"intensity", 0.5f, {}},
       {"audio_db_min", 80.0f, {{"audio_db_max", 135.0f}}},
       {"audio_db_max", 135.0f, {}},
       {"audio_frequency_min", 0.2f, {}},
       {"audio_frequency_max", 0.9f, {}},
       {"audio_mirror", false, {}}});
}

TEST_F(OutlinePoints, WithoutOpacityNothingIsDrawn) {
  EXPECT_TRUE(Same(Render({{"alpha", 0.0f}}), Render({{"alpha", 0.0f}, {"single_color", 1}})));
}

// The first pass says which points a tile is near; one that says "all of them" shows what is right.
TEST_F(OutlinePoints, NoPointIsLeftOutOfATileThatItReaches) {
  const ScratchFolder folder;
  auto description = json::parse(std::ifstream(kPackage + "/description.json"));
  description["unique_name"] = "all_points_audio_visualization_mask_shape";
  folder.Write("description.json", description.dump());
  folder.Write("near_points.frag", "#version 120\nvoid main() { gl_FragColor = vec4(1.0); }\n");
  std::ostringstream points;
  points << std::ifstream(kPackage + "/points.frag").rdbuf();
  folder.Write("points.frag", points.str());
  const auto all_points = Open(folder.path(), description["unique_name"]);

  const Values cases[] = {{},
                          {{"max_length", 0}},
                          {{"max_length", 300}, {"point_size", 0.1f}},
                          {{"point_size", 2.0f}, {"behind", false}}};
  for (const Values& values : cases) {
    EXPECT_TRUE(Same(Render(session_.get(), values), Render(all_points.get(), values)));
  }
}

}  // namespace
}  // namespace krv::test
