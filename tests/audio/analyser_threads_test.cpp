// For the thread sanitizer above all: analysers on several threads share FFTW's planner.
#include <gtest/gtest.h>

#include <thread>

#include "audio/audio_visual_process_fft.h"
#include "audio/test_signals.h"

namespace krv {
namespace {

// What one effect sees of a track whose block length alternates, and so plans anew each frame.
std::vector<float> LevelsOfTrack(uint32_t seed) {
  AudioVisualProcessFFT analyser;
  std::vector<float> levels;
  for (uint32_t frame = 0; frame < 40; ++frame) {
    const int frames = frame % 2 == 0 ? 1601 : 1602;
    const auto block = test::MakeNoise(frames, 2, seed + frame);
    cv::Mat image;
    levels.push_back(0.0f);
    analyser.Process(image, frames, 2, block.data(), levels.back());
  }
  return levels;
}

TEST(AnalyserThreads, AnalysersOnSeveralThreadsDoNotDisturbEachOther) {
  std::vector<std::vector<float>> levels(4);
  std::vector<std::thread> threads;
  for (uint32_t i = 0; i < levels.size(); ++i) {
    threads.emplace_back([&levels, i] { levels[i] = LevelsOfTrack(100 * i); });
  }
  for (std::thread& thread : threads) thread.join();
  for (uint32_t i = 0; i < levels.size(); ++i) EXPECT_EQ(levels[i], LevelsOfTrack(100 * i)) << i;
}

}  // namespace
}  // namespace krv
