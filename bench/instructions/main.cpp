// instruction_work frames PLUGIN PACKAGE WIDTH HEIGHT memory|gpu TIMES
// instruction_work audio|fft SAMPLES[,SAMPLES...] TIMES
//
// Does one thing that many times, for a counter of instructions around it: renders frames, analyses
// stereo audio blocks of these lengths in turn, or transforms as many samples.
#include <glad/gl.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "audio/audio_visual_process_fft.h"
#include "bare_fft.h"
#include "bench/bench_scene.h"
#include "bench/frame_ring.h"
#include "bench/frame_runner.h"
#include "bench/package_facts.h"
#include "plugin_host.h"
#include "utf8_path.h"

namespace krv {
namespace {

using Arguments = std::vector<std::string>;

void RenderFrames(const Arguments& arguments) {
  std::string error;
  const host::DeviceUse form =
      arguments[5] == "gpu" ? host::DeviceUse::kGpu : host::DeviceUse::kMemory;
  const auto package = host::PathFromUtf8(arguments[2]);
  const auto facts = tool::ReadPackageFacts(package, &error);
  const auto host = host::PluginHost::Create(
      {.plugin = host::PathFromUtf8(arguments[1]), .device = form}, &error);
  if (!facts || host == nullptr || !host->RegisterPackages(package, &error) ||
      !host->MakeContextCurrent(&error)) {
    throw std::runtime_error(error);
  }
  tool::BenchScene scene({std::stoi(arguments[3]), std::stoi(arguments[4])});
  const tool::FrameRing frames(scene.picture(), form);
  tool::FrameRunner runner(host, {facts->unique_name, {}, 1}, &scene, &frames);
  const int times = std::stoi(arguments[6]);
  for (int i = 0; i < times; ++i) runner.Run(i);
}

std::vector<int> Lengths(const std::string& text) {
  std::vector<int> lengths;
  std::istringstream list(text);
  for (std::string length; std::getline(list, length, ',');) lengths.push_back(std::stoi(length));
  return lengths;
}

void AnalyseAudio(const std::vector<int>& lengths, int times) {
  tool::BenchScene scene({16, 16});
  AudioVisualProcessFFT analyser;
  for (int i = 0; i < times; ++i) {
    cv::Mat spectrum;
    float level = 0;
    analyser.Process(spectrum, lengths[static_cast<size_t>(i) % lengths.size()], 2,
                     scene.Audio(i % 20).samples, level);
    if (spectrum.empty()) throw std::runtime_error("no spectrum");
  }
}

void Transform(const std::vector<int>& lengths, int times) {
  std::vector<std::unique_ptr<BareFft>> transforms;
  for (const int length : lengths) transforms.push_back(std::make_unique<BareFft>(length));
  for (int i = 0; i < times; ++i) transforms[static_cast<size_t>(i) % transforms.size()]->Run();
}

bool Run(const Arguments& arguments) {
  if (arguments.size() == 7 && arguments[0] == "frames") {
    RenderFrames(arguments);
  } else if (arguments.size() == 3 && arguments[0] == "audio") {
    AnalyseAudio(Lengths(arguments[1]), std::stoi(arguments[2]));
  } else if (arguments.size() == 3 && arguments[0] == "fft") {
    Transform(Lengths(arguments[1]), std::stoi(arguments[2]));
  } else {
    return false;
  }
  return true;
}

}  // namespace
}  // namespace krv

int main(int count, char** arguments) {
  try {
    if (krv::Run({arguments + 1, arguments + count})) return 0;
    std::fputs(
        "usage: instruction_work frames PLUGIN PACKAGE WIDTH HEIGHT memory|gpu TIMES\n"
        "       instruction_work audio|fft SAMPLES[,SAMPLES...] TIMES\n",
        stderr);
    return 2;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "instruction_work: %s\n", error.what());
    return 1;
  }
}
