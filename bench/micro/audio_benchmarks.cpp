// The analysis of one frame's sound, beside the bare transform.
#include <benchmark/benchmark.h>

#include "audio/audio_visual_process_fft.h"
#include "bare_fft.h"
#include "bench/bench_scene.h"

namespace krv {
namespace {

void Analyse(benchmark::State& state, int first, int second) {
  const tool::BenchScene scene({16, 16});
  AudioVisualProcessFFT analyser;
  int64_t frame = 0;
  for (auto _ : state) {
    cv::Mat spectrum;
    float level = 0;
    analyser.Process(spectrum, frame % 2 == 0 ? first : second, 2, scene.Audio(frame % 20).samples,
                     level);
    benchmark::DoNotOptimize(level);
    ++frame;
  }
}

void AudioStage(benchmark::State& state) {
  const int samples = static_cast<int>(state.range(0));
  Analyse(state, samples, samples);
}
BENCHMARK(AudioStage)->Arg(1600)->Arg(1601)->Arg(1602)->Arg(1764)->Arg(2002);

// 30000/1001 frames a second at 48 kHz.
void AudioStageOfTwoLengthsInTurn(benchmark::State& state) { Analyse(state, 1601, 1602); }
BENCHMARK(AudioStageOfTwoLengthsInTurn);

void BareTransform(benchmark::State& state) {
  BareFft transform(static_cast<int>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(transform.Run().data());
}
BENCHMARK(BareTransform)->Arg(1600)->Arg(1601)->Arg(1602)->Arg(1764)->Arg(2002);

}  // namespace
}  // namespace krv
