// Moving pixels, and laying an effect over a frame, by height of the frame in lines.
#include <benchmark/benchmark.h>
#include <glad/gl.h>

#include <cstring>
#include <memory>
#include <vector>

#include "bench/bench_scene.h"
#include "bench/frame_ring.h"
#include "bench/least_work.h"
#include "compositing/overlay.h"
#include "graphics/px_graphics.h"
#include "graphics/px_image.h"
#include "plugin_under_bench.h"

namespace krv {
namespace {

constexpr tool::FrameSize kEffect = {853, 480};

tool::FrameSize SizeOfState(const benchmark::State& state) {
  const int height = static_cast<int>(state.range(0));
  return {height * 16 / 9, height};
}

size_t BytesOf(tool::FrameSize size) {
  return static_cast<size_t>(size.width) * static_cast<size_t>(size.height) * 4;
}

void CountBytes(benchmark::State& state, tool::FrameSize size) {
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(BytesOf(size)));
}

void EveryHeight(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(720)->Arg(1080)->Arg(2160)->Unit(benchmark::kMillisecond);
  benchmark->MeasureProcessCPUTime()->UseRealTime();
}

void CopyOfAFrame(benchmark::State& state) {
  const tool::FrameSize size = SizeOfState(state);
  const std::vector<uint8_t> from(BytesOf(size), 1);
  std::vector<uint8_t> to(BytesOf(size));
  for (auto _ : state) {
    std::memcpy(to.data(), from.data(), to.size());
    benchmark::ClobberMemory();
  }
  CountBytes(state, size);
}
BENCHMARK(CopyOfAFrame)->Apply(EveryHeight);

// Into a texture that stays, as the bytes of this order are called.
void Upload(benchmark::State& state, GLenum order) {
  PluginFor(host::DeviceUse::kMemory);
  const tool::FrameSize size = SizeOfState(state);
  const std::vector<uint8_t> pixels(BytesOf(size), 1);
  GLuint texture = 0;
  glGenTextures(1, &texture);
  glBindTexture(GL_TEXTURE_2D, texture);
  glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, size.width, size.height, 0, order, GL_UNSIGNED_BYTE,
               nullptr);
  for (auto _ : state) {
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, size.width, size.height, order, GL_UNSIGNED_BYTE,
                    pixels.data());
    glFinish();
  }
  glDeleteTextures(1, &texture);
  CountBytes(state, size);
}
BENCHMARK_CAPTURE(Upload, BGRA, GL_BGRA)->Apply(EveryHeight);
BENCHMARK_CAPTURE(Upload, RGBA, GL_RGBA)->Apply(EveryHeight);

// By the plug-in's own image.
void UploadByTheGraphicsLayer(benchmark::State& state) {
  PluginFor(host::DeviceUse::kMemory);
  const auto device = CreateGraphics(GraphicsKind::kOpenGl);
  const tool::FrameSize size = SizeOfState(state);
  const std::vector<uint8_t> pixels(BytesOf(size), 1);
  for (auto _ : state) {
    const auto image = CreateImage(
        static_cast<uint32_t>(size.width), static_cast<uint32_t>(size.height), PixelLayout::kBgra,
        DataType::kUint8, static_cast<uint32_t>(size.width) * 4, pixels.data());
    if (image == nullptr) state.SkipWithError("no image");
    glFinish();
  }
  CountBytes(state, size);
}
BENCHMARK(UploadByTheGraphicsLayer)->Apply(EveryHeight);

void ReadBackByTheGraphicsLayer(benchmark::State& state) {
  PluginFor(host::DeviceUse::kMemory);
  const auto device = CreateGraphics(GraphicsKind::kOpenGl);
  const tool::FrameSize size = SizeOfState(state);
  std::vector<uint8_t> pixels(BytesOf(size), 1);
  const auto image = CreateImage(
      static_cast<uint32_t>(size.width), static_cast<uint32_t>(size.height), PixelLayout::kBgra,
      DataType::kUint8, static_cast<uint32_t>(size.width) * 4, pixels.data());
  for (auto _ : state) {
    if (!ReadTexture(*image, pixels.data(), size.width * 4)) state.SkipWithError("not read");
  }
  CountBytes(state, size);
}
BENCHMARK(ReadBackByTheGraphicsLayer)->Apply(EveryHeight);

// A quad that samples a frame and an effect of 480 lines.
void BlendByOpenGl(benchmark::State& state) {
  PluginFor(host::DeviceUse::kGpu);
  const tool::FrameSize size = SizeOfState(state);
  const tool::BenchScene scene(size);
  const tool::FrameRing frames(scene.picture(), host::DeviceUse::kGpu);
  const tool::LeastWork work({.pass_size = kEffect, .blend = true}, size, frames);
  int64_t frame = 0;
  for (auto _ : state) {
    work.Run(++frame);
    glFinish();
  }
  CountBytes(state, size);
}
BENCHMARK(BlendByOpenGl)->Apply(EveryHeight);

// An effect whose lower half shows something.
void LayOverOnTheCpu(benchmark::State& state) {
  const tool::FrameSize size = SizeOfState(state);
  const std::vector<uint8_t> input(BytesOf(size), 100);
  std::vector<uint8_t> output(BytesOf(size));
  Overlay overlay;
  overlay.Resize(kEffect.width, kEffect.height, size.width, size.height);
  const int32_t half = kEffect.height / 2;
  const size_t half_bytes = BytesOf(kEffect) / 2;
  const ptrdiff_t stride = ptrdiff_t{size.width} * 4;
  for (auto _ : state) {
    // Laying over changes the effect's rows. Writing them is the read-back's work.
    state.PauseTiming();
    std::memset(overlay.StartEffect(half, half) + half_bytes, 120, half_bytes);
    state.ResumeTiming();
    overlay.LayOver({kPixel8, input.data(), stride, output.data(), stride}, true);
    benchmark::ClobberMemory();
  }
  CountBytes(state, size);
}
BENCHMARK(LayOverOnTheCpu)->Apply(EveryHeight);

}  // namespace
}  // namespace krv
