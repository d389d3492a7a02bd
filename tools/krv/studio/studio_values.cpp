// What the studio does about values, at the position that it is at.
#include <algorithm>
#include <utility>

#include "keyframes/keyframe_writer.h"
#include "studio/keyframe_file.h"
#include "studio/studio.h"
#include "utf8_path.h"

namespace krv::studio {

using host::ParameterListing;

host::HostValue Studio::Value(const ParameterListing& parameter) const {
  return values_.ValueAt(parameter, frame_now());
}

void Studio::SetValue(const ParameterListing& parameter, host::HostValue value) {
  if (keys().Find(parameter.name) != nullptr) Pause();
  values_.Set(parameter, frame_now(), std::move(value));
}

void Studio::Reset(const ParameterListing& parameter) { SetValue(parameter, DefaultOf(parameter)); }

void Studio::ToggleKey(const ParameterListing& parameter) {
  values_.ToggleKey(parameter, frame_now());
  if (keys().Find(chosen_) == nullptr) chosen_.clear();
}

void Studio::RemoveKeys(const ParameterListing& parameter) {
  values_.RemoveKeys(parameter, frame_now());
  if (keys().Find(chosen_) == nullptr) chosen_.clear();
}

void Studio::SetWay(std::string_view name, tool::Way way) {
  values_.SetWay(name, frame_now(), way);
}

int64_t Studio::MoveKeys(int64_t from, int64_t to) {
  to = std::clamp<int64_t>(to, 0, clip_->frame_count() - 1);
  const int64_t reached = values_.MoveKeys(chosen_, from, to);
  SeekFrame(reached);
  return reached;
}

void Studio::SeekKey(bool next) {
  const std::vector<int64_t> frames = keys().Frames(chosen_);
  const int64_t now = frame_now();
  const auto at_or_after = std::lower_bound(frames.begin(), frames.end(), now);
  const auto after = std::upper_bound(at_or_after, frames.end(), now);
  if (next ? after == frames.end() : at_or_after == frames.begin()) return;
  Pause();
  SeekFrame(std::min(next ? *after : *std::prev(at_or_after), clip_->frame_count() - 1));
}

void Studio::Choose(std::string_view name) {
  chosen_ = name == chosen_ || keys().Find(name) == nullptr ? std::string_view() : name;
}

std::string Studio::LoadKeyframes() {
  std::string error;
  const auto tracks =
      studio::LoadKeyframes(keyframe_file_, sheet().effect(), clip_->video().rate, &error);
  if (tracks) {
    values_.Load(*tracks);
    saved_text_ = tool::KeyframeText(values_.Tracks());
  } else {
    keyframe_file_.clear();  // what could not be read is not to be written over
  }
  return error;
}

bool Studio::KeyframesUnsaved() const {
  if (keyframes_to_load_ || (keys().empty() && keyframe_file_.empty())) return false;
  return unsaved_ || sent_revision_ != values_.revision();  // changed since the last Update
}

bool Studio::SaveKeyframes(const std::filesystem::path& file) {
  if (keyframes_to_load_) {
    Say(host::Utf8(file) + ": not saved, since the values of " + host::Utf8(keyframe_file_) +
            " are loaded only when the package works; correct its errors first",
        true);
    return false;
  }
  std::string error;
  const std::string text = tool::KeyframeText(values_.Tracks());
  if (!studio::SaveKeyframes(file, text, &error)) {
    Say(error, true);
    return false;
  }
  keyframe_file_ = file;
  saved_text_ = text;
  unsaved_ = false;
  Say("Saved the keyframes in " + host::Utf8(file) + ".", false);
  return true;
}

}  // namespace krv::studio
