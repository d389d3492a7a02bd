// A click is seen in the very frame whose time span holds it.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "host/render_program.h"
#include "media/frame_rate.h"

namespace krv::host {
namespace {

constexpr char kBars[] =
    " --effect audio_visualization_bars --packages \"" KRV_PACKAGES "\" -o @frames/ ";
constexpr char kRates[][12] = {"24", "30000/1001", "30", "60"};

// The frame shown at a sample's time.
int64_t FrameAt(int64_t sample, int sample_rate, const std::string& rate_text) {
  const FrameRate rate = *ParseFrameRate(rate_text);
  return sample * rate.numerator / (rate.denominator * sample_rate);
}

constexpr int64_t kBurst = 60;  // samples

// The frames that hold a part of one of the bursts.
std::set<int64_t> FramesWith(const std::vector<int64_t>& positions, int sample_rate,
                             const std::string& rate) {
  std::set<int64_t> frames;
  for (const int64_t position : positions) {
    frames.insert(FrameAt(position, sample_rate, rate));
    frames.insert(FrameAt(position + kBurst - 1, sample_rate, rate));
  }
  return frames;
}

// An ffmpeg input with short bursts at each of these positions, silent otherwise.
std::string Bursts(int sample_rate, double seconds, const std::vector<int64_t>& positions) {
  std::string expression = "0";
  for (const int64_t position : positions) {
    expression += "+0.9*between(n," + std::to_string(position) + "," +
                  std::to_string(position + kBurst - 1) + ")*cos(n*0.3)";
  }
  return "-f lavfi -i \"aevalsrc='" + expression + "':s=" + std::to_string(sample_rate) +
         ":d=" + std::to_string(seconds) + ",aformat=channel_layouts=stereo\" ";
}

class RenderSync : public RenderProgramTest {
 protected:
  // The frames in @frames/ that differ from the silent frame `reference`.
  std::set<int64_t> LoudFrames(int64_t reference) {
    const auto pictures = ReadPictures("frames");
    std::set<int64_t> loud;
    for (const auto& [frame, picture] : pictures) {
      if (!SamePicture(picture, pictures.at(reference))) loud.insert(frame);
    }
    return loud;
  }

  void RemoveFrames() { std::filesystem::remove_all(media_.folder() / "frames"); }
};

TEST_F(RenderSync, BarsRiseInTheFrameThatHoldsTheClick) {
  for (const int sample_rate : {44100, 48000}) {
    const std::vector<int64_t> clicks = {sample_rate * 51 / 120, sample_rate * 91 / 120 + 40,
                                         sample_rate * 151 / 120};
    media_.Make("clicks.wav", Bursts(sample_rate, 1.5, clicks));
    for (const std::string rate : kRates) {
      RenderWell("@clicks.wav --size 64x48 --fps " + rate + kBars);
      EXPECT_EQ(LoudFrames(0), FramesWith(clicks, sample_rate, rate))
          << sample_rate << " Hz at " << rate;
      RemoveFrames();
    }
  }
}

TEST_F(RenderSync, SoundAndPicturesOfAVideoStayTogether) {
  const std::vector<int64_t> clicks = {20000, 50000, 80000};
  for (const std::string rate : {"24", "30000/1001"}) {
    media_.Make("clip.mov", "-f lavfi -i color=s=64x48:d=2:r=" + rate + " " +
                                Bursts(48000, 2, clicks) + "-c:a pcm_s16le ");
    RenderWell(std::string("@clip.mov") + kBars);
    EXPECT_EQ(LoudFrames(0), FramesWith(clicks, 48000, rate)) << rate;
    RemoveFrames();
  }
}

TEST_F(RenderSync, NothingHasDriftedAfterAnHour) {
  constexpr int kSampleRate = 44100;
  constexpr int64_t kQuiet = int64_t{3599} * kSampleRate;
  constexpr int64_t kClick = 60100;  // after the quiet hour
  media_.Make("hour.flac", "-f lavfi -i anullsrc=r=44100:cl=stereo:d=3599 " +
                               Bursts(kSampleRate, 3, {kClick}) +
                               "-filter_complex \"[0][1]concat=v=0:a=1\" -compression_level 0 ");
  for (const std::string rate : kRates) {
    const int64_t frame = FrameAt(kQuiet + kClick, kSampleRate, rate);
    RenderWell("@hour.flac --size 64x48 --fps " + rate + " --frames " + std::to_string(frame - 3) +
               ":" + std::to_string(frame + 4) + kBars);
    EXPECT_EQ(LoudFrames(frame - 3), FramesWith({kQuiet + kClick}, kSampleRate, rate)) << rate;
    RemoveFrames();
  }
}

}  // namespace
}  // namespace krv::host
