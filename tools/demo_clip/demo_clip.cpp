#include "demo_clip.h"

#include <vector>

#include "demo_music.h"
#include "demo_picture.h"
#include "media/audio_timeline.h"
#include "media/media_writer.h"

namespace krv::demo {
namespace {

constexpr int kSampleRate = 48000;

}  // namespace

bool WriteDemoClip(const std::filesystem::path& path, host::PictureSize size,
                   const std::function<bool()>& go_on) {
  host::MovieSettings settings;
  settings.output = host::ChooseOutputFormat(path, false);
  settings.video = {size.width, size.height, {30, 1}, 1, 1};
  settings.audio = {kSampleRate, 2, 0};
  const std::vector<int16_t> music = MakeMusic(kSampleRate);
  DemoPicture background(size.width, size.height);
  host::MediaWriter writer(path, settings);
  host::Picture picture;
  const int64_t frames = host::FramesForSamples(static_cast<int64_t>(music.size()) / 2,
                                                settings.video.rate, kSampleRate);
  for (int64_t frame = 0; frame < frames; ++frame) {
    if (!go_on()) return false;
    background.Draw(static_cast<double>(frame) / settings.video.rate.PerSecond(), &picture);
    const auto span = host::SamplesOfFrame(frame, settings.video.rate, kSampleRate);
    const auto first = music.begin() + 2 * span.first;
    writer.Write(picture, std::vector<int16_t>(first, first + 2 * span.count));
  }
  writer.Finish();
  return true;
}

}  // namespace krv::demo
