#include "gallery/gallery_clip.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <opencv2/imgproc.hpp>
#include <string>
#include <utility>

#include "demo_clip.h"
#include "gallery/loudness.h"
#include "media/media_error.h"
#include "temporary_folder.h"
#include "utf8_path.h"

namespace krv::tool {
namespace {

namespace fs = std::filesystem;
using host::MediaError;

constexpr host::PictureSize kLargest{640, 360};
constexpr host::FrameRate kHighestRate{30, 1};
constexpr double kLength = 3;  // seconds
constexpr double kFade = 0.4;  // seconds

cv::Mat AsMat(host::Picture* picture) {
  return {picture->height(), picture->width(), CV_8UC4, picture->Row(0),
          static_cast<size_t>(picture->stride())};
}

// The size with square pixels that fits, with even sides as video wants them.
host::PictureSize FittingSize(const host::VideoFormat& video) {
  const double width =
      static_cast<double>(video.width) * video.aspect_numerator / video.aspect_denominator;
  const double scale =
      std::min({1.0, kLargest.width / width, static_cast<double>(kLargest.height) / video.height});
  const auto even = [](double side) {
    return std::max(2, 2 * static_cast<int>(std::lround(side / 2)));
  };
  return {even(width * scale), even(video.height * scale)};
}

void ScaleTo(host::PictureSize size, host::Picture* picture) {
  if (picture->width() == size.width && picture->height() == size.height) return;
  host::Picture scaled(size.width, size.height);
  cv::Mat target = AsMat(&scaled);
  cv::resize(AsMat(picture), target, target.size(), 0, 0, cv::INTER_AREA);
  *picture = std::move(scaled);
}

int64_t FrameCount(double seconds, host::FrameRate rate) {
  return std::max<int64_t>(1, std::llround(seconds * rate.PerSecond()));
}

std::vector<double> Loudness(const RenderInput& input) {
  host::AudioReader sound(input.audio_path(), input.audio_origin());
  const int64_t expected = input.ExpectedFrames();
  return FrameLoudness(&sound, input.video().rate,
                       expected < 0 ? std::numeric_limits<int64_t>::max() : expected);
}

// With the rate limited.
RenderOptions OptionsFor(const std::vector<fs::path>& inputs) {
  RenderOptions options;
  options.inputs = inputs;
  if (RenderInput(options).video().rate.PerSecond() > kHighestRate.PerSecond()) {
    options.rate = kHighestRate;
  }
  return options;
}

std::vector<RenderJob> ReadFrames(const RenderOptions& options, host::PictureSize size) {
  RenderInput input(options);
  std::vector<RenderJob> frames;
  for (RenderJob job; input.Read(&job); job = RenderJob()) {
    ScaleTo(size, &job.input);
    frames.push_back(std::move(job));
  }
  if (frames.empty()) {
    throw MediaError(host::Utf8(options.inputs.front()) + ": has no frame with sound");
  }
  return frames;
}

}  // namespace

void BlendLoop(std::vector<RenderJob>* frames, size_t fade) {
  const size_t tail = frames->size() - fade;
  for (size_t i = 0; i < fade; ++i) {
    const double share = static_cast<double>(i + 1) / static_cast<double>(fade + 1);
    cv::Mat last = AsMat(&(*frames)[tail + i].input);
    cv::addWeighted(AsMat(&(*frames)[i].input), share, last, 1 - share, 0, last);
  }
  frames->erase(frames->begin(), frames->begin() + static_cast<ptrdiff_t>(fade));
}

GalleryClip LoadGalleryClip(const std::vector<fs::path>& inputs) {
  RenderOptions options = OptionsFor(inputs);
  const RenderInput input(options);
  const std::vector<double> loudness = Loudness(input);
  const host::FrameRate rate = input.video().rate;
  const int64_t first = LoudestRun(loudness, FrameCount(kLength, rate));
  const int64_t fade = std::min(first, FrameCount(kFade, rate));
  options.frames = {first - fade, first + FrameCount(kLength, rate)};

  GalleryClip clip;
  const host::PictureSize size = FittingSize(input.video());
  clip.video = {size.width, size.height, rate, 1, 1};
  clip.audio = input.audio();
  clip.frames = ReadFrames(options, size);
  BlendLoop(&clip.frames, std::min(static_cast<size_t>(fade), clip.frames.size() / 2));
  return clip;
}

GalleryClip MakeDemoGalleryClip() {
  std::string error;
  const auto folder = host::TemporaryFolder::Create(&error);
  if (folder == nullptr) throw MediaError(error);
  const fs::path file = folder->path() / "demo.mp4";
  demo::WriteDemoClip(file, kLargest, [] { return true; });
  return LoadGalleryClip({file});
}

}  // namespace krv::tool
