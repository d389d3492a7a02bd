#include <cmath>
#include <cstring>
#include <vector>

#include "audio/audio_visual_process_fft.h"
#include "fuzz/require.h"
#include "fuzz/targets.h"

namespace krv::fuzz {

void AnalyseAudio(std::string_view bytes) {
  // One analyser for all blocks: their lengths change from one to the next.
  static AudioVisualProcessFFT analyser;
  const auto channels = static_cast<uint8_t>(bytes.empty() ? 0 : bytes.front());
  std::vector<int16_t> samples(bytes.empty() ? 0 : (bytes.size() - 1) / 2);
  if (!samples.empty()) std::memcpy(samples.data(), bytes.data() + 1, samples.size() * 2);
  const auto frames = static_cast<int32_t>(channels == 0 ? 0 : samples.size() / channels);

  cv::Mat image;
  float level = NAN;
  analyser.Process(image, frames, channels, samples.data(), level);
  Require(std::isfinite(level) && level >= 0, "a level is a number");
  if (frames < 2) {
    Require(image.empty() && level == 0, "a block too short has no spectrum");
    return;
  }
  Require(image.type() == CV_8UC4 && image.rows == 1, "a spectrum is one row of pixels");
  Require(image.cols == (frames / 2 + 1) / 2, "a spectrum has every second bin");
  for (int x = 0; x < image.cols; ++x) {
    const auto& pixel = image.at<cv::Vec4b>(0, x);
    Require(pixel[0] == pixel[1] && pixel[1] == pixel[2] && pixel[3] == 255, "bands are grey");
  }
}

}  // namespace krv::fuzz
