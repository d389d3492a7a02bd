// krv_demo_clip OUT.mp4: a clip of 12 s with music, to show effects on.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "demo_music.h"
#include "demo_picture.h"
#include "media/audio_timeline.h"
#include "media/media_error.h"
#include "media/media_writer.h"
#include "platform/process.h"
#include "platform/standard_streams.h"
#include "utf8_path.h"

namespace krv::demo {
namespace {

constexpr int kSampleRate = 48000;

void MakeClip(const std::filesystem::path& path) {
  host::MovieSettings settings;
  settings.output = host::ChooseOutputFormat(path, false);
  settings.video = {1280, 720, {30, 1}, 1, 1};
  settings.audio = {kSampleRate, 2, 0};
  const std::vector<int16_t> music = MakeMusic(kSampleRate);
  DemoPicture background(settings.video.width, settings.video.height);
  host::MediaWriter writer(path, settings);
  host::Picture picture;
  const int64_t frames = host::FramesForSamples(static_cast<int64_t>(music.size()) / 2,
                                                settings.video.rate, kSampleRate);
  for (int64_t frame = 0; frame < frames; ++frame) {
    background.Draw(static_cast<double>(frame) / settings.video.rate.PerSecond(), &picture);
    const auto span = host::SamplesOfFrame(frame, settings.video.rate, kSampleRate);
    const auto first = music.begin() + 2 * span.first;
    writer.Write(picture, std::vector<int16_t>(first, first + 2 * span.count));
  }
  writer.Finish();
}

}  // namespace
}  // namespace krv::demo

int main(int argc, char** argv) {
  krv::host::platform::PrepareStandardStreams();
  const std::vector<std::string> arguments = krv::host::platform::ProgramArguments(argc, argv);
  if (arguments.size() != 1) {
    std::fputs("usage: krv_demo_clip OUT.mp4\n", stderr);
    return 2;
  }
  krv::host::SilenceAvLog();
  try {
    krv::demo::MakeClip(krv::host::PathFromUtf8(arguments.front()));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "krv_demo_clip: %s\n", error.what());
    return 2;
  }
  return 0;
}
