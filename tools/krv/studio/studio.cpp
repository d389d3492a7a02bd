#include "studio/studio.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

#include "keyframes/keyframe_writer.h"
#include "package_files.h"

namespace krv::studio {
namespace {

constexpr double kNoticeSeconds = 5;
constexpr int kUntimed = 2;  // frames

// The shares of the clip's size at which pictures are drawn to fit; few, so that a window that is
// being resized does not ask for a new one at every step.
constexpr double kShares[] = {0.25, 0.375, 0.5, 0.75, 1};

host::PictureSize Share(const host::VideoFormat& video, double share) {
  const auto side = [share](int full) {
    return std::max(2, 2 * static_cast<int>(std::lround(full * share / 2)));
  };
  if (share == 1) return {video.width, video.height};
  return {side(video.width), side(video.height)};
}

// What to say of parameters whose keys had to go.
std::string KeysGone(const std::vector<std::string>& names) {
  std::string text =
      "Keyframes are gone: the package has no parameter, or one of another kind, by ";
  text += names.size() == 1 ? "the name " : "the names ";
  for (const std::string& name : names) text += '"' + name + "\", ";
  text.replace(text.size() - 2, 2, ".");
  return text;
}

}  // namespace

void TimeHistory::Add(float milliseconds) {
  times_[next_] = milliseconds;
  next_ = (next_ + 1) % kLength;
  count_ = std::min(count_ + 1, kLength);
}

float TimeHistory::Median() const {
  if (count_ == 0) return 0;
  std::vector<float> sorted;
  for (size_t i = kLength - count_; i < kLength; ++i) sorted.push_back(At(i));
  std::nth_element(sorted.begin(), sorted.begin() + static_cast<ptrdiff_t>(count_ / 2),
                   sorted.end());
  return sorted[count_ / 2];
}

Studio::Studio(Options options, std::unique_ptr<Clip> clip)
    : package_folder_(std::move(options.package)),
      clip_(std::move(clip)),
      clock_(clip_->Length()),
      feeder_(&clip_->sound(), &clock_),
      values_(clip_->video().rate),
      keyframe_file_(std::move(options.keyframes)),
      keyframes_to_load_(!keyframe_file_.empty()) {}

std::unique_ptr<Studio> Studio::Create(Options options, std::unique_ptr<Clip> clip,
                                       std::string* error) {
  StageOptions stage;
  stage.plugin = options.plugin;
  stage.package = options.package;
  stage.now = Now;
  stage.on_news = options.on_news;
  std::unique_ptr<Studio> studio(new Studio(std::move(options), std::move(clip)));
  stage.clip = studio->clip_.get();
  stage.clock = &studio->clock_;
  studio->settings_.size = studio->SizeNow();
  studio->stage_ = Stage::Create(std::move(stage), studio->settings_, error);
  if (studio->stage_ == nullptr) return nullptr;
  if (studio->keyframes_to_load_) {
    studio->stage_->AwaitPackage();
    *error = studio->TakePackage(studio->stage_->package());
    if (!error->empty()) return nullptr;
  }
  return studio;
}

double Studio::Now() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void Studio::Update() {
  PackageState package = stage_->package();
  if (package.version != package_.version) {
    std::string problem = TakePackage(std::move(package));
    if (!problem.empty()) Say(std::move(problem), true);
  }
  export_ = stage_->export_state();
  if (stage_->TakeFrame(&frame_)) {
    ++frames_;
    // In the first frames of a version drivers finish what they put off.
    if (untimed_ > 0) {
      --untimed_;
    } else {
      times_.Add(static_cast<float>(frame_.effect_ms));
    }
  }
  if (sent_revision_ != values_.revision()) {
    sent_revision_ = values_.revision();
    settings_.values = values_.Tracks();
    settings_changed_ = true;
    unsaved_ = tool::KeyframeText(settings_.values) != saved_text_;
  }
  if (settings_changed_) stage_->SetPreview(settings_);
  settings_changed_ = false;
}

std::string Studio::TakePackage(PackageState package) {
  package_ = std::move(package);
  untimed_ = kUntimed;
  if (!package_.effect) return {};
  groups_ = GroupParameters(*package_.effect);
  const std::vector<std::string> gone = values_.SetEffect(*package_.effect);
  if (keys().Find(chosen_) == nullptr) chosen_.clear();
  if (!gone.empty()) return KeysGone(gone);
  return std::exchange(keyframes_to_load_, false) ? LoadKeyframes() : std::string();
}

void Studio::TogglePlay() {
  if (playing()) {
    Pause();
  } else {
    Play();
  }
}

void Studio::Seek(double seconds) { clock_.Seek(seconds, Now()); }

void Studio::SeekFrame(int64_t frame) { Seek(clip_->TimeOf(frame)); }

void Studio::Step(int64_t frames) {
  Pause();
  SeekFrame(std::clamp<int64_t>(frame_now() + frames, 0, clip_->frame_count() - 1));
}

host::PictureSize Studio::SizeNow() const {
  const host::VideoFormat& video = clip_->video();
  switch (preview_size_) {
    case PreviewSize::kFull:
      return Share(video, 1);
    case PreviewSize::kHalf:
      return Share(video, 0.5);
    case PreviewSize::kQuarter:
      return Share(video, 0.25);
    case PreviewSize::kFit:
      break;
  }
  constexpr double kEnough = 0.94;  // slightly soft is better than half as fast
  const double needed = std::min(viewport_.width / static_cast<double>(video.width),
                                 viewport_.height / static_cast<double>(video.height));
  for (const double share : kShares) {
    if (share >= kEnough * needed) return Share(video, share);
  }
  return Share(video, 1);
}

void Studio::SetPreviewSize(PreviewSize size) {
  preview_size_ = size;
  SetViewport(viewport_.width, viewport_.height);
}

void Studio::SetViewport(int width, int height) {
  viewport_ = {std::max(1, width), std::max(1, height)};
  const host::PictureSize size = SizeNow();
  if (size.width == settings_.size.width && size.height == settings_.size.height) return;
  settings_.size = size;
  settings_changed_ = true;
}

void Studio::SetQuality(const std::string& quality) {
  if (quality == settings_.quality) return;
  settings_.quality = quality;
  settings_changed_ = true;
}

void Studio::SaveDefaults() {
  if (sheet().changed().empty()) return Say("Nothing to save: every value is the default.", false);
  std::string error;
  const size_t count = sheet().changed().size();
  if (!krv::studio::SaveDefaults(package_folder_ / host::kDescriptionFileName, sheet().changed(),
                                 &error)) {
    return Say(error, true);
  }
  Say("Saved " + std::to_string(count) + (count == 1 ? " default" : " defaults") +
          " in description.json.",
      false);
}

void Studio::StartExport(const std::string& output, bool transparent) {
  Pause();
  stage_->StartExport(output, transparent, values_.Tracks());
  export_ = stage_->export_state();
}

void Studio::ForgetExport() {
  stage_->ForgetExport();
  export_ = {};
}

std::string_view Studio::notice() const {
  return Now() < notice_.until ? std::string_view(notice_.text) : std::string_view();
}

void Studio::Say(std::string text, bool is_error) {
  notice_ = {std::move(text), is_error, Now() + kNoticeSeconds};
}

}  // namespace krv::studio
