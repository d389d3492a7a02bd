// The analyser that effects use: one Fourier transform per audio block.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "audio/audio_transform.h"
#include "audio/audio_visual_process.h"

namespace krv {

// The transform is as long as the block. Two lengths are kept ready, since a frame rate that does
// not divide the sample rate makes blocks of two lengths in turn; another one costs a new plan. The
// transform itself runs unlocked. Any number of analysers may run on as many threads.
class AudioVisualProcessFFT final : public AudioVisualProcess {
 public:
  AudioVisualProcessFFT() = default;
  AudioVisualProcessFFT(const AudioVisualProcessFFT&) = delete;
  AudioVisualProcessFFT& operator=(const AudioVisualProcessFFT&) = delete;

  // The spectrum is (sample_frames / 2 + 1) / 2 pixels wide: every second bin of the transform,
  // smoothed over 20 pixels. Throws std::system_error when the planner's lock cannot be taken.
  void Process(cv::Mat& image, int32_t sample_frames, uint8_t channels, const int16_t* samples,
               float& level) override;

 private:
  // The transform for blocks of that length, from now on the latest.
  AudioTransform& TransformFor(uint32_t size);
  // Fills the bytes of the bins from the transform's output and returns the block's level.
  float MeasureBins(const AudioTransform& transform);
  void DrawSpectrum(cv::Mat& image);

  std::unique_ptr<AudioTransform> latest_;
  std::unique_ptr<AudioTransform> previous_;
  std::vector<uint8_t> bin_bytes_;
};

}  // namespace krv
