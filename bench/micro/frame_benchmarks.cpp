// Frames of every package, through the plug-in's tables; with software OpenGL its threads' time
// counts as processor time.
#include <benchmark/benchmark.h>

#include <memory>

#include "bench/bench_scene.h"
#include "bench/frame_ring.h"
#include "bench/frame_runner.h"
#include "bench/package_facts.h"
#include "effect_context.h"
#include "package_copy.h"
#include "package_files.h"
#include "plugin_under_bench.h"

namespace krv {
namespace {

constexpr tool::FrameSize kPassSize = {853, 480};

void RunFrames(benchmark::State& state, const std::string& unique_name, tool::FrameSize size,
               host::DeviceUse form) {
  const auto host = PluginFor(form);
  tool::BenchScene scene(size);
  const tool::FrameRing frames(scene.picture(), form);
  tool::FrameRunner runner(host, {unique_name, {}, 1}, &scene, &frames);
  int64_t frame = 0;
  runner.Run(frame);
  for (auto _ : state) runner.Run(++frame);
}

void WholeFrame(benchmark::State& state, const std::string& unique_name, host::DeviceUse form) {
  const int height = static_cast<int>(state.range(0));
  RunFrames(state, unique_name, {height * 16 / 9, height}, form);
}

// The package drawn straight into a texture of 480 lines: its passes, with parameters and sound.
void Passes(benchmark::State& state, const std::filesystem::path& folder) {
  std::string error;
  host::PackageChanges changes;
  changes.name_suffix = ".passes";
  changes.original = true;
  const auto host = PluginFor(host::DeviceUse::kGpu);
  // Kept for good: the plug-in keeps the package's path.
  static std::vector<std::unique_ptr<host::PackageCopy>> copies;
  copies.push_back(host::PackageCopy::Create(folder, changes, &error));
  if (copies.back() == nullptr || !host->RegisterPackages(copies.back()->folder(), &error)) {
    throw std::runtime_error(error);
  }
  RunFrames(state, copies.back()->unique_name(), kPassSize, host::DeviceUse::kGpu);
}

// Slot 10: every parameter asked for and stored.
void Parameters(benchmark::State& state, const std::string& unique_name) {
  const auto host = PluginFor(host::DeviceUse::kMemory);
  KRVEffect* effect = nullptr;
  host::ParameterValues values;
  host::FrameContext context({.parameters = &values});
  if (host->plugin().create_effect(unique_name.c_str(), kDeviceKindMemory, &effect) != kOk ||
      effect->Initialize(&context) != kOk) {
    throw std::runtime_error(unique_name + " cannot be made");
  }
  for (auto _ : state) effect->ApplyParameters(&context);
  effect->ReleaseResources();
  host->plugin().release_effect(effect);
}

// Slot 11.
void Uniform(benchmark::State& state, const std::string& unique_name) {
  const auto host = PluginFor(host::DeviceUse::kMemory);
  KRVEffect* effect = nullptr;
  host::FrameContext context({});
  if (host->plugin().create_effect(unique_name.c_str(), kDeviceKindMemory, &effect) != kOk ||
      effect->Initialize(&context) != kOk) {
    throw std::runtime_error(unique_name + " cannot be made");
  }
  ParameterValue value{};
  value.kind = kKindFloat;
  value.as_float = 0.5F;
  for (auto _ : state) effect->SetUniform("intensity", &value);
  effect->ReleaseResources();
  host->plugin().release_effect(effect);
}

}  // namespace

void RegisterFrameBenchmarks() {
  for (const auto& folder : host::FindPackageFolders(KRV_PACKAGES)) {
    std::string error;
    const auto facts = tool::ReadPackageFacts(folder, &error);
    if (!facts) throw std::runtime_error(error);
    const std::string name = folder.filename().string();
    const auto add = [&name](const std::string& kind, auto run, auto... arguments) {
      return benchmark::RegisterBenchmark((kind + "/" + name).c_str(), run, arguments...)
          ->Unit(benchmark::kMillisecond)
          ->MeasureProcessCPUTime()
          ->UseRealTime();
    };
    add("Passes", Passes, folder);
    for (const host::DeviceUse form : {host::DeviceUse::kMemory, host::DeviceUse::kGpu}) {
      add(std::string("WholeFrame/") + tool::FormName(form), WholeFrame, facts->unique_name, form)
          ->Arg(720)
          ->Arg(1080)
          ->Arg(2160);
    }
    if (name != "bars") continue;
    benchmark::RegisterBenchmark("Parameters/bars", Parameters, facts->unique_name);
    benchmark::RegisterBenchmark("Uniform/bars", Uniform, facts->unique_name);
  }
}

}  // namespace krv
