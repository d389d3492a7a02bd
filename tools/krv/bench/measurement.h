// What was measured.
#pragma once

#include <string>
#include <vector>

#include "bench/bench_options.h"
#include "bench/figures.h"
#include "bench/least_work.h"
#include "bench/package_facts.h"

namespace krv::tool {

// Of one frame, or of the work that takes its place. Milliseconds.
struct WorkCost {
  Spread wall;  // over all frames
  Spread cpu;   // over the rounds, each the mean of its frames
};

// One package in one form at one size.
struct Measurement {
  PackageFacts facts;
  host::DeviceUse form = host::DeviceUse::kMemory;
  FrameSize size = {0, 0};
  WorkCost frame;
  WorkCost limit;
  std::vector<NamedSpread> limit_parts;  // wall; GL is waited for after each
  std::vector<NamedSpread> stages;       // wall; empty when the plug-in does not tell them

  double WallRatio() const { return frame.wall.median / limit.wall.median; }
  double CpuRatio() const { return frame.cpu.median / limit.cpu.median; }
  double FramesPerSecond() const { return 1000 / frame.wall.median; }
};

struct BenchResult {
  std::string gl_renderer;
  BenchSettings settings;
  std::vector<Measurement> measurements;
};

}  // namespace krv::tool
