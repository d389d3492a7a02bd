// Everything about the studio but its window.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "studio/clip.h"
#include "studio/parameter_groups.h"
#include "studio/player_clock.h"
#include "studio/sound_feeder.h"
#include "studio/stage.h"
#include "studio/value_sheet.h"

namespace krv::studio {

// How large pictures are drawn, by the clip's size.
enum class PreviewSize { kFit, kFull, kHalf, kQuarter };

// What the plug-in took for the last frames, the newest last.
class TimeHistory {
 public:
  static constexpr size_t kLength = 96;

  void Add(float milliseconds);
  // Of the oldest frame first; 0 before there were frames.
  float At(size_t i) const { return times_[(next_ + i) % kLength]; }
  float Latest() const { return At(kLength - 1); }
  float Median() const;  // of the frames there were

 private:
  std::array<float, kLength> times_{};
  size_t next_ = 0;
  size_t count_ = 0;
};

// A word to the user that goes away by itself.
struct Notice {
  std::string text;
  bool is_error = false;
  double until = 0;  // on the studio's clock
};

// One thread, but for feeder().
class Studio {
 public:
  struct Options {
    std::filesystem::path plugin;
    std::filesystem::path package;    // the package's folder
    std::filesystem::path keyframes;  // a file with the first values; empty for none
    std::function<void()> on_news;    // called on another thread when Update has something to do
  };

  // Null on failure, with one line in *error.
  static std::unique_ptr<Studio> Create(Options options, std::unique_ptr<Clip> clip,
                                        std::string* error);

  // Takes over what is new, hands on what the user changed. Once per picture of the window.
  void Update();

  // Seconds on a steady clock.
  static double Now();

  // Playing.
  bool playing() const { return clock_.Playing(Now()); }
  double position() const { return clock_.Position(Now()); }  // seconds
  double length() const { return clock_.length(); }           // seconds
  bool loop() const { return clock_.loop(); }
  bool muted() const { return feeder_.muted(); }
  void Play() { clock_.Play(Now()); }
  void Pause() { clock_.Pause(Now()); }
  void TogglePlay();
  void ToggleLoop() { clock_.SetLoop(!loop(), Now()); }
  void ToggleMute() { feeder_.SetMuted(!muted()); }
  void Seek(double seconds);
  void SeekFrame(int64_t frame);
  int64_t frame_now() const { return clip_->FrameAt(position()); }
  void Step(int64_t frames);  // from the frame shown; pauses
  const Clip& clip() const { return *clip_; }
  SoundFeeder& feeder() { return feeder_; }

  // The preview.
  const StageFrame& frame() const { return frame_; }
  uint64_t frame_count() const { return frames_; }  // pictures that have arrived
  const TimeHistory& times() const { return times_; }
  PreviewSize preview_size() const { return preview_size_; }
  void SetPreviewSize(PreviewSize size);
  // The pixels that there are to show pictures on.
  void SetViewport(int width, int height);
  host::PictureSize picture_size() const { return settings_.size; }
  const std::string& quality() const { return settings_.quality; }  // empty for the package's own
  void SetQuality(const std::string& quality);

  // The package.
  const std::filesystem::path& package_folder() const { return package_folder_; }
  const PackageState& package() const { return package_; }
  const ParameterSheet& sheet() const { return values_.constants(); }
  const std::vector<ParameterGroup>& groups() const { return groups_; }
  // At the position.
  host::HostValue Value(const host::ParameterListing& parameter) const;
  // Of a parameter with keys: the key at the position; it pauses, since that is one frame's.
  void SetValue(const host::ParameterListing& parameter, host::HostValue value);
  // To the default.
  void Reset(const host::ParameterListing& parameter);
  // Values that do not change over time.
  void ResetAll() { values_.ResetAll(); }
  // Writes the values into the description, as its defaults.
  void SaveDefaults();

  // Values over time, at the position.
  const KeySheet& keys() const { return values_.keys(); }
  void ToggleKey(const host::ParameterListing& parameter);
  void RemoveKeys(const host::ParameterListing& parameter);
  void SetWay(std::string_view name, tool::Way way);
  // Moves the keys of a frame, those of the chosen parameter or all, as KeySheet::Move does, and
  // goes along. Returns the frame that they are at.
  int64_t MoveKeys(int64_t from, int64_t to);
  // To the next frame that has keys, or back to the one before.
  void SeekKey(bool next);
  // The parameter whose keys alone are meant by the operations above; empty for all.
  const std::string& chosen() const { return chosen_; }
  // Of parameters with keys; the same name again, or an empty one, for all.
  void Choose(std::string_view name);

  // The file that all values are saved in; empty when it has no name yet.
  const std::filesystem::path& keyframe_file() const { return keyframe_file_; }
  // Whether there are keys, or were in the file, and values are not as in it. Before the file's own
  // are loaded there is nothing to save.
  bool KeyframesUnsaved() const;
  // Writes all values, so that `krv render --params` draws what is seen. False when it cannot, as
  // before those of keyframe_file() are loaded.
  bool SaveKeyframes(const std::filesystem::path& file);

  // Exporting.
  const ExportState& export_state() const { return export_; }
  void StartExport(const std::string& output, bool transparent);
  void CancelExport() { stage_->CancelExport(); }
  void ForgetExport();

  // Empty when there is none now.
  std::string_view notice() const;
  bool notice_is_error() const { return notice_.is_error; }
  std::string failure() const { return stage_->failure(); }

 private:
  Studio(Options options, std::unique_ptr<Clip> clip);
  void Say(std::string text, bool is_error);
  host::PictureSize SizeNow() const;
  // Both return one line about what is wrong, or nothing.
  std::string TakePackage(PackageState package);
  std::string LoadKeyframes();

  std::filesystem::path package_folder_;
  std::unique_ptr<Clip> clip_;
  PlayerClock clock_;
  SoundFeeder feeder_;
  PreviewSize preview_size_ = PreviewSize::kFit;
  host::PictureSize viewport_{1280, 720};
  PreviewSettings settings_;
  bool settings_changed_ = false;
  ValueSheet values_;
  uint64_t sent_revision_ = 0;  // of values_
  std::filesystem::path keyframe_file_;
  bool keyframes_to_load_ = false;  // as soon as a version of the package works
  std::string saved_text_;          // of the file
  bool unsaved_ = false;            // whether the values would make another text
  std::string chosen_;
  std::vector<ParameterGroup> groups_;
  PackageState package_;
  ExportState export_;
  StageFrame frame_;
  uint64_t frames_ = 0;
  TimeHistory times_;
  int untimed_ = 0;  // frames to come that times_ leaves out
  Notice notice_;
  std::unique_ptr<Stage> stage_;  // last: it uses the clip and the clock
};

}  // namespace krv::studio
