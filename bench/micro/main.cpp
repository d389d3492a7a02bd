// krv_benchmarks: micro-benchmarks of the plug-in's stages; takes Google Benchmark's options.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <exception>

#include "plugin_under_bench.h"

int main(int count, char** arguments) {
  benchmark::Initialize(&count, arguments);
  if (benchmark::ReportUnrecognizedArguments(count, arguments)) return 2;
  try {
    krv::RegisterPackageBenchmarks();
    krv::RegisterFrameBenchmarks();
    benchmark::RunSpecifiedBenchmarks();
    krv::EndPlugin();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "krv_benchmarks: %s\n", error.what());
    return 1;
  }
  return 0;
}
