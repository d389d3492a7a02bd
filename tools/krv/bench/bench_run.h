// Measures packages.
#pragma once

#include <filesystem>
#include <functional>
#include <vector>

#include "bench/bench_options.h"
#include "bench/measurement.h"

namespace krv::tool {

// Measures the package of every folder in every form and at every size. `done` gets each
// measurement, when its stages are known too, with the renderer that all are measured on. Throws
// std::invalid_argument for what the user asked wrongly, std::runtime_error for what fails.
BenchResult RunBench(const std::filesystem::path& plugin,
                     const std::vector<std::filesystem::path>& folders,
                     const BenchSettings& settings,
                     const std::function<void(const BenchResult&, const Measurement&)>& done);

}  // namespace krv::tool
