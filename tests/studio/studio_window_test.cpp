// The studio's window, operated as a user does.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "folder_tree.h"
#include "host/host_test_files.h"
#include "media/media_error.h"
#include "studio/studio_hand.h"

namespace krv::studio {
namespace {

using test::StudioHand;

class StudioInItsWindow : public host::FilesTest {
 protected:
  void SetUp() override {
    host::FilesTest::SetUp();
    host::SilenceAvLog();
    package_ = Path("bars");
    std::filesystem::create_directory(package_);
    host::CopyTree(host::PathFromUtf8(KRV_PACKAGES) / "bars", package_);
  }

  // Opens the window and waits for the first picture with the effect.
  void Open(std::unique_ptr<Clip> clip, bool play, Theme theme = Theme::kDark) {
    StudioWindow::Options options;
    options.studio.plugin = host::PathFromUtf8(KRV_PLUGIN_FILE);
    options.studio.package = package_;
    options.theme = theme;
    options.window.title = name_;
    options.play = play;
    std::string error;
    window_ = StudioWindow::Create(options, std::move(clip), &error);
    if (window_ == nullptr) throw std::runtime_error(error);
    hand_ = std::make_unique<StudioHand>(window_.get());
    hand_->Turns(2);  // until the window has told how large the picture is
    if (!hand_->Until(
            [this] { return studio().frame().picture.width() == studio().picture_size().width; })) {
      throw std::runtime_error("there is no picture");
    }
  }

  Studio& studio() { return window_->studio(); }

  std::filesystem::path package_;
  std::unique_ptr<StudioWindow> window_;
  std::unique_ptr<StudioHand> hand_;
};

// What the stage has drawn, as bytes.
std::vector<uint8_t> Bytes(const host::Picture& picture) {
  std::vector<uint8_t> bytes;
  for (int y = 0; y < picture.height(); ++y) {
    bytes.insert(bytes.end(), picture.Row(y), picture.Row(y) + ptrdiff_t{4} * picture.width());
  }
  return bytes;
}

TEST_F(StudioInItsWindow, PlaysAndPauses) {
  Open(MakeDemoClip(), true);
  const int64_t first = studio().frame().index;
  const auto before = Bytes(studio().frame().picture);
  EXPECT_TRUE(hand_->Until([&] { return studio().frame().index > first + 5; }));
  EXPECT_NE(Bytes(studio().frame().picture), before);
  hand_->Key(SDLK_SPACE);
  EXPECT_FALSE(studio().playing());
  hand_->Click("play");
  EXPECT_TRUE(studio().playing());
  hand_->Click("picture");
  EXPECT_FALSE(studio().playing());
  hand_->Turns(30);
  const uint64_t pictures = studio().frame_count();
  hand_->Turns(30);
  EXPECT_EQ(studio().frame_count(), pictures);
}

TEST_F(StudioInItsWindow, ASliderChangesTheValueAndThePicture) {
  Open(MakeDemoClip(), false);
  const auto before = Bytes(studio().frame().picture);
  const uint64_t pictures = studio().frame_count();
  const auto& height = *studio().sheet().effect().Find("spectrum_minimum_height");
  hand_->Drag(hand_->At("param/spectrum_minimum_height", 0.1),
              hand_->At("param/spectrum_minimum_height", 0.5));
  EXPECT_NEAR(std::get<float>(studio().sheet().Value(height)), 50, 2);
  EXPECT_TRUE(hand_->Until([&] { return studio().frame_count() > pictures; }));
  EXPECT_TRUE(hand_->Until([&] { return Bytes(studio().frame().picture) != before; }));
  hand_->Click("reset/spectrum_minimum_height");
  EXPECT_TRUE(studio().sheet().changed().empty());
  EXPECT_TRUE(hand_->Until([&] { return Bytes(studio().frame().picture) == before; }));
}

}  // namespace
}  // namespace krv::studio
