#include "render_input.h"

#include <algorithm>

#include "media/media_error.h"
#include "media/media_file.h"
#include "media/video_reader.h"
#include "utf8_path.h"

namespace krv::tool {
namespace {

namespace fs = std::filesystem;
using host::MediaError;
using host::Utf8;

constexpr host::PictureSize kDefaultSize{1920, 1080};

struct ChosenFiles {
  fs::path video;  // empty when there is none
  fs::path audio;
};

// At most one input with video and one with sound alone, so that none is left unused.
ChosenFiles ChooseFiles(const std::vector<fs::path>& inputs) {
  fs::path video;
  fs::path sound_alone;
  bool video_has_sound = false;
  for (const fs::path& input : inputs) {
    const host::MediaContents contents = host::ProbeMedia(input);
    if (contents.still) {
      throw MediaError(Utf8(input) + ": is a picture; give it with --background");
    }
    if (!contents.video && !contents.audio) {
      throw MediaError(Utf8(input) + ": has neither video nor sound");
    }
    fs::path& place = contents.video ? video : sound_alone;
    if (!place.empty()) {
      throw MediaError(Utf8(input) + ": only one input with " +
                       (contents.video ? "video" : "sound alone") + " can be used, and " +
                       Utf8(place) + " is one");
    }
    place = input;
    if (contents.video) video_has_sound = contents.audio;
  }
  if (!sound_alone.empty()) return {video, sound_alone};
  if (!video_has_sound) {
    throw MediaError(Utf8(video) + ": has no sound; give a sound file as well");
  }
  return {video, video};
}

std::unique_ptr<host::FrameSource> MakeBackground(const RenderOptions& options) {
  const host::FrameRate rate = options.rate.value_or(host::FrameRate{});
  if (!options.background_picture.empty()) {
    return std::make_unique<host::StillSource>(
        host::LoadPicture(options.background_picture, options.size), rate);
  }
  const host::PictureSize size = options.size.value_or(kDefaultSize);
  host::Picture picture(size.width, size.height);
  const BackgroundColour& colour = options.background_colour;
  picture.Fill(colour.blue, colour.green, colour.red, 255);
  return std::make_unique<host::StillSource>(std::move(picture), rate);
}

void CheckBackgroundUnused(const RenderOptions& options, const fs::path& video) {
  for (const auto& [given, name] : {std::pair(options.background_given, "--background"),
                                    std::pair(options.size.has_value(), "--size")}) {
    if (given) {
      throw MediaError(std::string(name) + " is for sound alone, and " + Utf8(video) +
                       " has video");
    }
  }
}

}  // namespace

RenderInput::RenderInput(const RenderOptions& options)
    : frames_(options.frames), transparent_(options.transparent), next_(options.frames.first) {
  const ChosenFiles files = ChooseFiles(options.inputs);
  audio_path_ = files.audio;
  if (!options.mask.empty()) matte_.emplace(options.mask, next_);
  if (files.video.empty()) {
    still_ = true;
    pictures_ = MakeBackground(options);
    sound_.emplace(files.audio);
    return;
  }
  CheckBackgroundUnused(options, files.video);
  auto video = std::make_unique<host::VideoReader>(files.video, options.rate);
  std::optional<host::Timestamp> origin;  // sound of its own file starts with its first sample
  if (files.audio == files.video) origin = video->origin();
  sound_.emplace(files.audio, origin);
  if (next_ > 0) video->SkipTo(next_);
  pictures_ = std::move(video);
}

host::AudioFormat RenderInput::audio() const {
  return {sound_->sample_rate(), sound_->channels(), sound_->channel_mask()};
}

int64_t RenderInput::ExpectedFrames() const {
  int64_t frames = pictures_->ExpectedFrames();
  if (still_ && sound_->ExpectedSamples() >= 0) {
    frames = host::FramesForSamples(sound_->ExpectedSamples(), video().rate, sound_->sample_rate());
  }
  if (frames_.end && (frames < 0 || frames > *frames_.end)) frames = *frames_.end;
  return frames < 0 ? -1 : std::max<int64_t>(frames - frames_.first, 0);
}

bool RenderInput::Read(RenderJob* job) {
  if (frames_.end && next_ >= *frames_.end) return false;
  if (!pictures_->Read(transparent_ ? nullptr : &job->input)) return false;
  if (matte_) matte_->Read(&job->mask);
  job->span = host::SamplesOfFrame(next_, video().rate, sound_->sample_rate());
  const int64_t heard = sound_->Read(job->span.first, job->span.count, &job->samples);
  if (still_ && heard == 0) return false;
  job->index = next_++;
  return true;
}

}  // namespace krv::tool
