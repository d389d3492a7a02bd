// Tests that operate the studio's window.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "folder_tree.h"
#include "host/host_test_files.h"
#include "host/media_maker.h"
#include "media/media_error.h"
#include "studio/studio_hand.h"

namespace krv::studio {

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
  void Open(std::unique_ptr<Clip> clip, bool play, const std::filesystem::path& keyframes = {}) {
    StudioWindow::Options options;
    options.studio.plugin = host::PathFromUtf8(KRV_PLUGIN_FILE);
    options.studio.package = package_;
    options.studio.keyframes = keyframes;
    options.window.title = name_;
    options.window.width = width_;
    options.window.height = height_;
    options.play = play;
    std::string error;
    window_ = StudioWindow::Create(options, std::move(clip), &error);
    if (window_ == nullptr) throw std::runtime_error(error);
    hand_ = std::make_unique<test::StudioHand>(window_.get());
    hand_->Turns(2);  // until the window has told how large the picture is
    if (!hand_->Until(
            [this] { return studio().frame().picture.width() == studio().picture_size().width; })) {
      throw std::runtime_error("there is no picture");
    }
  }

  Studio& studio() { return window_->studio(); }

  int width_ = 1440;
  int height_ = 900;
  std::filesystem::path package_;
  std::unique_ptr<StudioWindow> window_;
  std::unique_ptr<test::StudioHand> hand_;
};

// Over a clip of ten frames, exported to files.
class StudioOverAFile : public StudioInItsWindow {
 protected:
  std::filesystem::path MakeClip() const {
    return media_.Make("clip.mkv", host::NumberedFrames("30", 0.34) +
                                       host::RampSamples(48000, "stereo", 0.34) +
                                       "-frames:v 10 -c:v libx264 -qp 0 -c:a pcm_s16le");
  }

  std::unique_ptr<Clip> OpenFile(const std::filesystem::path& file) const {
    tool::RenderArguments arguments;
    arguments.inputs = {host::Utf8(file)};
    return OpenClip(arguments);
  }

  // Fills in the dialogue and begins.
  void Export(const std::string& output) {
    hand_->Key(SDLK_e, KMOD_CTRL);
    hand_->Fill("export/output", output);
    hand_->Click("export/go");
  }

  bool IsIn(ExportState::Phase phase) { return studio().export_state().phase == phase; }

  host::MediaMaker media_;
};

// What the stage has drawn, as bytes.
inline std::vector<uint8_t> Bytes(const host::Picture& picture) {
  std::vector<uint8_t> bytes;
  for (int y = 0; y < picture.height(); ++y) {
    bytes.insert(bytes.end(), picture.Row(y), picture.Row(y) + ptrdiff_t{4} * picture.width());
  }
  return bytes;
}

inline double Brightness(const host::Picture& picture) {
  double sum = 0;
  const auto bytes = Bytes(picture);
  for (const uint8_t byte : bytes) sum += byte;
  return sum / static_cast<double>(bytes.size());
}

}  // namespace krv::studio
