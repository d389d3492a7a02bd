#include "bench/bench_run.h"

#include <glad/gl.h>

#include <memory>
#include <stdexcept>
#include <utility>

#include "bench/bench_scene.h"
#include "bench/frame_ring.h"
#include "bench/frame_runner.h"
#include "bench/least_work.h"
#include "bench/stage_times.h"
#include "package_copy.h"
#include "platform/process.h"
#include "plugin_host.h"

namespace krv::tool {
namespace {

constexpr int kWarmUpFrames = 4;

// The packages as they are measured: those of the user, or copies in the quality that he wishes.
// They outlive the plug-in, which keeps what it has registered through its restarts.
class MeasuredPackages {
 public:
  MeasuredPackages(const std::vector<std::filesystem::path>& folders,
                   const std::optional<std::string>& quality) {
    std::string error;
    for (const std::filesystem::path& folder : folders) {
      folders_.push_back(folder);
      if (quality) {
        host::PackageChanges changes;
        changes.quality = quality;
        copies_.push_back(host::PackageCopy::Create(folder, changes, &error));
        if (copies_.back() == nullptr) throw std::runtime_error(error);
        folders_.back() = copies_.back()->folder();
      }
      const auto facts = ReadPackageFacts(folders_.back(), &error);
      if (!facts) throw std::runtime_error(error);
      facts_.push_back(*facts);
    }
  }

  const std::vector<PackageFacts>& facts() const { return facts_; }

  void Register(host::PluginHost* host) const {
    std::string error;
    for (const std::filesystem::path& folder : folders_) {
      if (!host->RegisterPackages(folder, &error)) throw std::runtime_error(error);
    }
  }

 private:
  std::vector<std::unique_ptr<host::PackageCopy>> copies_;
  std::vector<std::filesystem::path> folders_;
  std::vector<PackageFacts> facts_;
};

// A started plug-in with the packages registered.
class BenchHost {
 public:
  BenchHost(const std::filesystem::path& plugin, const MeasuredPackages& packages,
            host::DeviceUse form, const BenchSettings& settings)
      : settings_(settings), form_(form) {
    std::string error;
    host_ = host::PluginHost::Create({.plugin = plugin, .device = form}, &error);
    if (host_ == nullptr || !host_->MakeContextCurrent(&error)) throw std::runtime_error(error);
    packages.Register(host_.get());
  }

  host::PluginHost& host() { return *host_; }

  FrameRunner Runner(const PackageFacts& facts, BenchScene* scene, const FrameRing* frames) {
    return {host_, {facts.unique_name, settings_.parameters, settings_.instances}, scene, frames};
  }

  host::DeviceUse form() const { return form_; }
  const BenchSettings& settings() const { return settings_; }

 private:
  BenchSettings settings_;
  host::DeviceUse form_;
  std::shared_ptr<host::PluginHost> host_;
};

// Collects what WorkCost tells.
class CostSamples {
 public:
  // Runs `work` for so many frames from `first` on.
  template <class Work>
  void AddRound(int64_t first, int frames, const Work& work) {
    const Stopwatch round;
    for (int64_t frame = first; frame < first + frames; ++frame) {
      const Stopwatch stopwatch;
      work(frame);
      wall_.push_back(stopwatch.WallMs());
    }
    cpu_.push_back(round.Elapsed().cpu_ms / frames);
  }

  WorkCost Cost() const { return {SpreadOf(wall_), SpreadOf(cpu_)}; }

 private:
  std::vector<double> wall_;
  std::vector<double> cpu_;
};

// Part by part, each until GL is done with it.
class PartSamples {
 public:
  explicit PartSamples(const LeastWork& work) : work_(work), wall_(work.parts().size()) {}

  void AddFrame(int64_t frame) {
    for (size_t i = 0; i < wall_.size(); ++i) {
      const Stopwatch stopwatch;
      work_.parts()[i].run(frame);
      glFinish();
      wall_[i].push_back(stopwatch.WallMs());
    }
  }

  std::vector<NamedSpread> Spreads() const {
    std::vector<NamedSpread> spreads;
    for (size_t i = 0; i < wall_.size(); ++i) {
      spreads.push_back({work_.parts()[i].name, SpreadOf(wall_[i])});
    }
    return spreads;
  }

 private:
  const LeastWork& work_;
  std::vector<std::vector<double>> wall_;
};

// Whole frames and the limit, round by round in turn.
Measurement MeasureFrames(BenchHost* bench, const PackageFacts& facts, FrameSize size) {
  const BenchSettings& settings = bench->settings();
  BenchScene scene(size);
  const FrameRing frames(scene.picture(), bench->form());
  FrameRunner runner = bench->Runner(facts, &scene, &frames);
  const LeastWork least(PlanLeastWork(facts, bench->form(), size), size, frames);
  const auto run_frame = [&runner](int64_t frame) { runner.Run(frame); };
  const auto run_limit = [&least](int64_t frame) {
    least.Run(frame);
    glFinish();
  };
  const int warm_up = kWarmUpFrames * settings.instances;
  for (int64_t frame = 0; frame < warm_up; ++frame) {
    run_frame(frame);
    run_limit(frame);
  }
  CostSamples of_frames;
  CostSamples of_limit;
  PartSamples of_parts(least);
  for (int round = 0; round < settings.rounds; ++round) {
    const int64_t first = warm_up + int64_t{round} * settings.frames;
    of_frames.AddRound(first, settings.frames, run_frame);
    of_limit.AddRound(first, settings.frames, run_limit);
    for (int64_t frame = first; frame < first + settings.frames; ++frame) of_parts.AddFrame(frame);
  }
  return {facts, bench->form(), size, of_frames.Cost(), of_limit.Cost(), of_parts.Spreads(), {}};
}

// One round of frames after each stage of which the plug-in waits for GL.
std::vector<NamedSpread> MeasureStages(BenchHost* bench, const PackageFacts& facts,
                                       FrameSize size) {
  BenchScene scene(size);
  const FrameRing frames(scene.picture(), bench->form());
  FrameRunner runner = bench->Runner(facts, &scene, &frames);
  std::vector<StageTimes> times;
  bench->host().services().SetLogSink([&times](const host::LogLine& line) {
    StageTimes frame = ParseStageTimes(line.text);
    if (!frame.empty()) times.push_back(std::move(frame));
  });
  const int warm_up = kWarmUpFrames * bench->settings().instances;
  for (int64_t frame = 0; frame < warm_up + bench->settings().frames; ++frame) {
    if (frame == warm_up) times.clear();
    runner.Run(frame);
  }
  bench->host().services().SetLogSink({});
  return StageSpreads(times);
}

std::vector<Measurement> MeasureAllFrames(BenchHost* bench,
                                          const std::vector<PackageFacts>& packages) {
  std::vector<Measurement> measurements;
  for (const PackageFacts& facts : packages) {
    for (const FrameSize size : bench->settings().sizes) {
      measurements.push_back(MeasureFrames(bench, facts, size));
    }
  }
  return measurements;
}

// Makes the plug-in tell its stages as long as it lives.
class StageWish {
 public:
  StageWish() { host::platform::SetVariable(kStageVariable, "1"); }
  ~StageWish() { host::platform::SetVariable(kStageVariable, nullptr); }
  StageWish(const StageWish&) = delete;
  StageWish& operator=(const StageWish&) = delete;
};

}  // namespace

BenchResult RunBench(const std::filesystem::path& plugin,
                     const std::vector<std::filesystem::path>& folders,
                     const BenchSettings& settings,
                     const std::function<void(const BenchResult&, const Measurement&)>& done) {
  const MeasuredPackages packages(folders, settings.quality);
  BenchResult result{{}, settings, {}};
  for (const host::DeviceUse form : settings.forms) {
    std::vector<Measurement> measurements;
    {
      BenchHost bench(plugin, packages, form, settings);
      result.gl_renderer = bench.host().ContextDescription();
      measurements = MeasureAllFrames(&bench, packages.facts());
    }
    const StageWish wish;
    BenchHost bench(plugin, packages, form, settings);
    for (Measurement& measurement : measurements) {
      measurement.stages = MeasureStages(&bench, measurement.facts, measurement.size);
      result.measurements.push_back(std::move(measurement));
      done(result, result.measurements.back());
    }
  }
  return result;
}

}  // namespace krv::tool
