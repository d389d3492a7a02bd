// Media files for tests, made by the ffmpeg program, which shares no code path with the readers and
// writers under test but the codecs.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "media/picture.h"
#include "temporary_folder.h"

namespace krv::host {

class MediaMaker {
 public:
  MediaMaker();

  const std::filesystem::path& folder() const { return folder_->path(); }

  // Runs ffmpeg with those arguments and the output's name, a file in folder(). A failure fails the
  // test.
  std::filesystem::path Make(const std::string& name, const std::string& arguments) const;

  // The files in folder(), hidden ones included, sorted.
  std::vector<std::string> Files() const;

 private:
  std::unique_ptr<TemporaryFolder> folder_;
};

// An ffmpeg input whose frame n shows the number n, up to 1599, in its grey levels; see ReadNumber.
std::string NumberedFrames(const std::string& rate, double seconds);

// An ffmpeg input whose sample n is RampSample(n), alike on all channels.
std::string RampSamples(int sample_rate, const std::string& layout, double seconds);
int16_t RampSample(int64_t n);

// An ffmpeg input with a single full sample at position `click`, silent otherwise.
std::string ClickSamples(int sample_rate, const std::string& layout, double seconds, int click);

// The number a frame of NumberedFrames shows.
int ReadNumber(const Picture& picture);

// The position of the loudest sample of the first channel.
int64_t LoudestSample(const std::vector<int16_t>& samples, int channels);

}  // namespace krv::host
