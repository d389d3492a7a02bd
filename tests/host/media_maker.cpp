#include "host/media_maker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "media/media_error.h"
#include "support/process.h"
#include "utf8_path.h"

namespace krv::host {
namespace {

constexpr int kStep = 5;      // luma between neighbouring numbers
constexpr int kNumbers = 40;  // per half of the picture

}  // namespace

MediaMaker::MediaMaker() {
  SilenceAvLog();
  std::string error;
  folder_ = TemporaryFolder::Create(&error);
  EXPECT_NE(folder_, nullptr) << error;
}

std::filesystem::path MediaMaker::Make(const std::string& name,
                                       const std::string& arguments) const {
  std::filesystem::path path = folder() / name;
  const std::string line = "-nostdin -y -v error " + arguments + " \"" + Utf8(path) + "\"";
  const test::ProgramOutcome outcome = test::RunProgram(KRV_FFMPEG, line);
  EXPECT_EQ(outcome.code, 0) << line << "\n" << outcome.error_output;
  return path;
}

std::vector<std::string> MediaMaker::Files() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder())) {
    names.push_back(Utf8(entry.path().filename()));
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string NumberedFrames(const std::string& rate, double seconds) {
  return "-f lavfi -i \"nullsrc=s=64x48:r=" + rate + ":d=" + std::to_string(seconds) +
         ",geq=lum='16+5*if(lt(X,32),mod(N,40),floor(N/40))':cb=128:cr=128\" ";
}

std::string RampSamples(int sample_rate, const std::string& layout, double seconds) {
  return "-f lavfi -i \"aevalsrc='(mod(n,65536)-32768)/32768':s=" + std::to_string(sample_rate) +
         ":d=" + std::to_string(seconds) + ",aformat=sample_fmts=s16,pan=" + layout +
         (layout == "mono"     ? "|c0=c0"
          : layout == "stereo" ? "|c0=c0|c1=c0"
                               : "|c0=c0|c1=c0|c2=c0|c3=c0|c4=c0|c5=c0") +
         "\" ";
}

int16_t RampSample(int64_t n) { return static_cast<int16_t>(n % 65536 - 32768); }

std::string ClickSamples(int sample_rate, const std::string& layout, double seconds, int click) {
  return "-f lavfi -i \"aevalsrc='0.9*eq(n," + std::to_string(click) +
         ")':s=" + std::to_string(sample_rate) + ":d=" + std::to_string(seconds) +
         ",aformat=channel_layouts=" + layout + "\" ";
}

int ReadNumber(const Picture& picture) {
  const auto digit = [&picture](int x) {
    const uint8_t* pixel = picture.Pixel(x, picture.height() / 2);
    return static_cast<int>(std::lround(pixel[1] * 219.0 / 255 / kStep));
  };
  return digit(picture.width() / 4) + kNumbers * digit(picture.width() * 3 / 4);
}

int64_t LoudestSample(const std::vector<int16_t>& samples, int channels) {
  int64_t loudest = 0;
  const auto step = static_cast<size_t>(channels);
  for (size_t i = 0; i < samples.size(); i += step) {
    if (std::abs(samples[i]) > std::abs(samples[static_cast<size_t>(loudest) * step])) {
      loudest = static_cast<int64_t>(i / step);
    }
  }
  return loudest;
}

}  // namespace krv::host
