// The thread on which the plug-in draws, without a window.
#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>

#include "host/host_test_files.h"
#include "host/media_maker.h"
#include "studio/stage.h"

namespace krv::studio {
namespace {

constexpr int kFrames = 10;

class StudioStage : public host::FilesTest {
 protected:
  std::unique_ptr<Clip> MakeClip() const {
    const auto file = media_.Make("clip.mkv", host::NumberedFrames("30", 0.34) +
                                                  host::RampSamples(48000, "stereo", 0.34) +
                                                  "-frames:v 10 -c:v libx264 -c:a pcm_s16le");
    tool::RenderArguments arguments;
    arguments.inputs = {host::Utf8(file)};
    return OpenClip(arguments);
  }

  host::MediaMaker media_;
};

TEST_F(StudioStage, AnExportThatIsCancelledWhenItIsBeingCompletedIsDone) {
  const auto clip = MakeClip();
  PlayerClock clock(clip->Length());
  std::atomic<Stage*> exporting = nullptr;
  std::mutex mutex;
  std::condition_variable ended;
  ExportState last;
  int told = 0;
  StageOptions options;
  options.plugin = host::PathFromUtf8(KRV_PLUGIN_FILE);
  options.package = host::PathFromUtf8(KRV_PACKAGES) / "bars";
  options.clip = clip.get();
  options.clock = &clock;
  options.now = [] { return 0.0; };
  options.on_news = [&] {
    Stage* const stage = exporting;
    if (stage == nullptr) return;
    const std::lock_guard lock(mutex);
    last = stage->export_state();
    // Told once when it begins and after every frame: all that is left is to complete the file.
    if (last.phase == ExportState::Phase::kRendering && ++told == 1 + kFrames) {
      stage->CancelExport();
    }
    ended.notify_all();
  };
  std::string error;
  const auto stage = Stage::Create(options, {}, &error);
  ASSERT_NE(stage, nullptr) << error;
  stage->AwaitPackage();
  host::WriteFile(Path("film.mkv"), "older");
  exporting = stage.get();
  stage->StartExport(host::Utf8(Path("film.mkv")), false, {});
  {
    std::unique_lock lock(mutex);
    ended.wait(lock,
               [&last] { return last.phase != ExportState::Phase::kNone && !last.Running(); });
  }
  exporting = nullptr;
  EXPECT_EQ(told, 1 + kFrames);
  EXPECT_EQ(last.phase, ExportState::Phase::kDone) << last.message;
  EXPECT_EQ(last.frames, kFrames);
  EXPECT_NE(host::ReadFile(Path("film.mkv")), "older");
}

}  // namespace
}  // namespace krv::studio
