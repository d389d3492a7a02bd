// Reading descriptions.
#include <benchmark/benchmark.h>

#include <fstream>
#include <iterator>

#include "description/effect_description.h"
#include "package_files.h"
#include "plugin_under_bench.h"

namespace krv {
namespace {

void ReadDescription(benchmark::State& state, const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  const std::string text(std::istreambuf_iterator<char>(in), {});
  for (auto _ : state) {
    EffectDescription description;
    if (description.ReadDescription(text, file) != 0) state.SkipWithError("cannot be read");
  }
}

}  // namespace

void RegisterPackageBenchmarks() {
  for (const auto& folder : host::FindPackageFolders(KRV_PACKAGES)) {
    benchmark::RegisterBenchmark(("ReadDescription/" + folder.filename().string()).c_str(),
                                 ReadDescription, (folder / host::kDescriptionFileName).string());
  }
}

}  // namespace krv
