// What an effect wants from the audio of a frame.
#pragma once

#include <cstdint>
#include <opencv2/core.hpp>

namespace krv {

// Turns the audio block of one frame into a spectrum for shaders to sample and one loudness value.
// Held by shared ownership; used by one thread at a time, no GL context needed.
class AudioVisualProcess {
 public:
  virtual ~AudioVisualProcess() = default;

  // `samples` holds `sample_frames` x `channels` interleaved values, read during the call only. The
  // channels are averaged into one.
  //
  // `image` becomes a picture of its own (it never overwrites pixels that an earlier call handed
  // out): one row of type CV_8UC4, red, green and blue equal and alpha 255, from the lowest
  // frequency on the left up to about half the sample rate on the right. Byte 0 stands for
  // -150 dB or less, byte 255 for 0 dB, relative to full scale.
  //
  // `level` becomes 50 + 100 x (d + 150) / 180, d being the mean in dB of all bands above -150 dB;
  // 0 when there is none. It is not limited to a range.
  //
  // A block without samples, without channels or of fewer than 2 sample frames, and one that no
  // transform can be had for, gives an empty image and level 0. Throws std::bad_alloc when memory
  // runs out.
  virtual void Process(cv::Mat& image, int32_t sample_frames, uint8_t channels,
                       const int16_t* samples, float& level) = 0;
};

}  // namespace krv
