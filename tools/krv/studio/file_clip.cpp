// A clip from media files.
#include <algorithm>
#include <opencv2/imgproc.hpp>
#include <optional>
#include <utility>

#include "media/audio_reader.h"
#include "media/audio_timeline.h"
#include "media/matte_reader.h"
#include "media/media_error.h"
#include "media/media_file.h"
#include "media/video_reader.h"
#include "studio/clip.h"
#include "utf8_path.h"

namespace krv::studio {
namespace {

namespace fs = std::filesystem;

cv::Mat AsMat(host::Picture* picture) {
  return {picture->height(), picture->width(), CV_8UC4, picture->Row(0),
          static_cast<size_t>(picture->stride())};
}

void ScaleTo(host::PictureSize size, host::Picture* from, host::Picture* to) {
  to->Resize(size.width, size.height);
  if (from->width() == size.width && from->height() == size.height) {
    host::CopyPicture(*from, to);
    return;
  }
  cv::Mat target = AsMat(to);
  const bool smaller = size.width < from->width();
  cv::resize(AsMat(from), target, target.size(), 0, 0, smaller ? cv::INTER_AREA : cv::INTER_LINEAR);
}

SoundTrack ReadWholeSound(const fs::path& path, const host::Timestamp& origin) {
  host::AudioReader reader(path, origin);
  SoundTrack track;
  track.format = {reader.sample_rate(), reader.channels(), reader.channel_mask()};
  const int64_t part = reader.sample_rate();
  std::vector<int16_t> samples;
  for (int64_t first = 0;; first += part) {
    const int64_t heard = reader.Read(first, part, &samples);
    samples.resize(static_cast<size_t>(heard * reader.channels()));
    track.samples.insert(track.samples.end(), samples.begin(), samples.end());
    if (heard < part) return track;
  }
}

// The input with video; empty when there is none.
fs::path VideoAmong(const std::vector<fs::path>& inputs) {
  for (const fs::path& input : inputs) {
    if (host::ProbeMedia(input).video) return input;
  }
  return {};
}

class FileClip final : public Clip {
 public:
  explicit FileClip(tool::RenderArguments inputs)
      : arguments_(std::move(inputs)), options_(tool::ParseRenderOptions(arguments_)) {
    tool::RenderInput input(options_);  // says what is wrong as `krv render` does
    video_ = input.video();
    sound_ = ReadWholeSound(input.audio_path(), input.audio_origin());
    name_ = host::Utf8(options_.inputs.front().filename());
    file_ = VideoAmong(options_.inputs);
    frame_count_ = input.ExpectedFrames();
    if (frame_count_ < 1) {
      frame_count_ =
          host::FramesForSamples(sound_.Length(), video_.rate, sound_.format.sample_rate);
    }
    frame_count_ = std::max<int64_t>(frame_count_, 1);
    tool::RenderJob first;
    if (input.Read(&first)) picture_ = std::move(first.input);
  }

  void Read(int64_t frame, host::PictureSize size, bool with_person,
            tool::RenderJob* job) override {
    ReadSound(frame, job);
    if (!file_.empty()) ReadPicture(frame);
    ScaleTo(size, &picture_, &job->input);
    if (with_person && !options_.mask.empty()) {
      ReadMask(frame, job);
    } else {
      job->mask = host::Picture();
    }
  }

  tool::RenderArguments ExportArguments(bool with_person,
                                        const std::function<void(double)>&) override {
    tool::RenderArguments arguments = arguments_;
    if (!with_person) arguments.mask.clear();
    return arguments;
  }

 private:
  // Into picture_; a frame that the file turns out not to have shows the last one read.
  void ReadPicture(int64_t frame) {
    if (frame == shown_) return;
    if (!reader_ || frame < next_) {
      reader_.emplace(file_, options_.rate);
      next_ = 0;
    }
    if (frame > next_) reader_->SkipTo(frame);
    next_ = frame + 1;
    shown_ = frame;
    host::Picture read;
    if (reader_->Read(&read)) picture_ = std::move(read);
  }

  void ReadMask(int64_t frame, tool::RenderJob* job) {
    if (frame != next_mask_ - 1) {
      if (!matte_ || frame != next_mask_) matte_.emplace(options_.mask, frame);
      matte_->Read(&mask_);
      next_mask_ = frame + 1;
    }
    host::CopyPicture(mask_, &job->mask);
  }

  tool::RenderArguments arguments_;
  tool::RenderOptions options_;
  fs::path file_;  // of the pictures; empty for a still background
  std::optional<host::VideoReader> reader_;
  int64_t next_ = 0;    // frame that reader_ is at
  int64_t shown_ = -1;  // frame in picture_
  host::Picture picture_;
  std::optional<host::MatteReader> matte_;
  int64_t next_mask_ = 0;
  host::Picture mask_;
};

}  // namespace

std::unique_ptr<Clip> OpenClip(const tool::RenderArguments& inputs) {
  tool::RenderArguments arguments = inputs;
  // Options are understood as a whole, and a render has an output.
  if (arguments.output.empty()) arguments.output = "studio.mp4";
  return std::make_unique<FileClip>(std::move(arguments));
}

}  // namespace krv::studio
