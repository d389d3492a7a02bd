// The thread on which the plug-in draws.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "check/finding.h"
#include "keyframes/parameter_tracks.h"
#include "media/picture.h"
#include "registrar.h"
#include "studio/clip.h"
#include "studio/player_clock.h"
#include "studio/sound_probe.h"

namespace krv::studio {

// How the preview is drawn. An export does not depend on it.
struct PreviewSettings {
  tool::ParameterTracks values;  // that differ from the package's defaults
  host::PictureSize size{1280, 720};
  std::string quality;  // "low", "medium" or "high"; empty for the package's own
};

// A picture as it was drawn, with what there is to tell about it.
struct StageFrame {
  host::Picture picture;
  int64_t index = 0;
  SoundReading sound;
  double input_ms = 0;   // until the clip's picture was there
  double effect_ms = 0;  // in the plug-in
  std::string problem;   // why the picture is the clip's own; empty when all is well
};

// What is known of the package.
struct PackageState {
  int64_t version = 0;                        // another one after every load
  bool ready = false;                         // whether there is a version that works
  std::string unique_name;                    // as the description has it
  std::optional<host::EffectListing> effect;  // of the last version that works
  std::string package_quality;                // that version's own
  tool::Findings findings;                    // about the files as they are now
  bool wants_person = false;
};

struct ExportState {
  enum class Phase { kNone, kPreparing, kRendering, kDone, kFailed, kCancelled };
  Phase phase = Phase::kNone;
  std::string output;
  double share = 0;     // of kPreparing
  int64_t frames = 0;   // done
  int64_t total = -1;   // -1 when unknown
  double seconds = 0;   // since the rendering's begin
  std::string message;  // of kDone and kFailed

  bool Running() const { return phase == Phase::kPreparing || phase == Phase::kRendering; }
};

struct StageOptions {
  std::filesystem::path plugin;
  std::filesystem::path package;  // the package's folder
  Clip* clip = nullptr;           // outlives the stage
  PlayerClock* clock = nullptr;   // outlives the stage
  std::function<double()> now;    // the clock's time; any thread
  std::function<void()> on_news;  // called on the stage's thread when there is something to see
};

// Draws the frame that the clock is at, again and again, loads the package anew when its files
// change, and renders exports, during which nothing is previewed. Calls from one thread.
class Stage {
 public:
  // Starts the thread and waits until the plug-in is loaded. Null on failure, with one line in
  // *error. A package that does not work is no failure.
  static std::unique_ptr<Stage> Create(StageOptions options, const PreviewSettings& settings,
                                       std::string* error);
  ~Stage();  // ends an export without a result, unless it is being completed
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  // Why the thread has ended of itself; empty while all is well.
  std::string failure() const;

  void SetPreview(const PreviewSettings& settings);

  // Exchanges *frame for the latest one. False when that was taken already.
  bool TakeFrame(StageFrame* frame);

  // Waits until the package was loaded for the first time, whether it works or not.
  void AwaitPackage();
  PackageState package() const;
  ExportState export_state() const;

  // Renders the clip into a file as `krv render` does, with the values and the working version of
  // the package as they are when it begins. One at a time.
  void StartExport(const std::string& output, bool transparent,
                   const tool::ParameterTracks& values);
  void CancelExport();
  void ForgetExport();  // the result has been seen

 private:
  class Turns;
  struct ExportOrder {
    std::string output;
    bool transparent = false;
    tool::ParameterTracks values;
  };

  explicit Stage(StageOptions options) : options_(std::move(options)) {}
  void Work(std::promise<std::string> started);

  StageOptions options_;
  mutable std::mutex mutex_;
  std::condition_variable wake_;    // the thread
  std::condition_variable loaded_;  // who waits for the package
  // Guarded by mutex_.
  bool quit_ = false;
  bool cancel_ = false;
  std::string failure_;
  PreviewSettings settings_;
  uint64_t settings_revision_ = 0;
  std::optional<ExportOrder> order_;
  StageFrame latest_;
  bool latest_is_new_ = false;
  PackageState package_;
  ExportState export_;

  std::thread thread_;
};

}  // namespace krv::studio
