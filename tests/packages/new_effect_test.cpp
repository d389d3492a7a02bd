// The way to an effect of one's own, as the README tells it.
#include <gmock/gmock.h>

#include <fstream>
#include <nlohmann/json.hpp>

#include "host/render_program.h"
#include "utf8_path.h"

namespace krv::host {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;

class NewEffect : public RenderProgramTest {
 protected:
  void SetUp() override {
    RenderProgramTest::SetUp();
    media_.Make("clip.mkv",
                "-f lavfi -i color=0x203040:s=160x90:r=25:d=0.2 "
                "-f lavfi -i anoisesrc=c=pink:seed=1:a=0.5:r=48000:d=0.2 "
                "-c:v ffv1 -c:a pcm_s16le ");
    std::filesystem::copy(std::filesystem::path(KRV_PACKAGES) / "bars", Path("my_bars"));
  }

  // Changes keys and defaults of the copy.
  void Edit(const json& keys, const std::map<std::string, json>& defaults) {
    const auto file = Path("my_bars/description.json");
    json description = json::parse(ReadFile(file));
    description.update(keys);
    for (json& parameter : description["params"]) {
      const auto found = defaults.find(parameter["name"]);
      if (found != defaults.end()) parameter["default_value"] = found->second;
    }
    WriteFile(file, description.dump(2));
  }

  test::ProgramOutcome Check() const {
    return test::RunProgram(KRV_PROGRAM, "check \"" + Utf8(Path("my_bars")) + "\"");
  }

  // The clip's fourth frame with the effect of that name from that folder.
  Picture RenderWith(const std::filesystem::path& packages, const std::string& effect) {
    RenderWell("@clip.mkv --frames 3:4 -o @" + effect + "/ --packages \"" + Utf8(packages) +
               "\" --effect " + effect);
    auto pictures = ReadPictures(effect);
    EXPECT_EQ(pictures.size(), 1u);
    return std::move(pictures.begin()->second);
  }
};

TEST_F(NewEffect, UntouchedCopyLooksLikeItsOrigin) {
  Edit({{"unique_name", "my_bars"}}, {});
  EXPECT_TRUE(SamePicture(RenderWith(Path("my_bars"), "my_bars"),
                          RenderWith(KRV_PACKAGES, "audio_visualization_bars")));
}

TEST_F(NewEffect, CopyLooksAsItsChangedDefaultsSay) {
  Edit({{"unique_name", "my_bars"}, {"display_name", "My bars"}},
       {{"single_color", 1}, {"color", 0xff0000}, {"spectrum_count", 5}, {"spectrum_width", 5}});
  const test::ProgramOutcome checked = Check();
  EXPECT_EQ(checked.code, 0) << checked.output;
  const Picture mine = RenderWith(Path("my_bars"), "my_bars");
  EXPECT_FALSE(SamePicture(mine, RenderWith(KRV_PACKAGES, "audio_visualization_bars")));
  int red = 0;
  for (int y = 0; y < mine.height(); ++y) {
    for (int x = 0; x < mine.width(); ++x) {
      const uint8_t* pixel = mine.Pixel(x, y);
      if (pixel[2] > 240 && pixel[1] < 20 && pixel[0] < 20) ++red;
    }
  }
  EXPECT_GT(red, 100);
}

TEST_F(NewEffect, DefaultOutsideItsLimitsIsRefused) {
  Edit({{"unique_name", "my_bars"}}, {{"spectrum_count", 5000}});
  const test::ProgramOutcome checked = Check();
  EXPECT_EQ(checked.code, 1);
  EXPECT_THAT(checked.output + checked.error_output, HasSubstr("5000 is outside 1 to 200"));
}

}  // namespace
}  // namespace krv::host
