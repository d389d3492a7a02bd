// What of a package decides which work its frames cannot do without.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "bench/bench_options.h"

namespace krv::tool {

struct PackageFacts {
  std::string unique_name;
  std::string quality = "medium";  // low, medium or high
  int passes = 0;
  // Whether the first pass reads the picture below. Told from the package's own shader files; false
  // for those that are enciphered.
  bool reads_background = false;
  bool without_blend = false;
  // Whether GL lays the figure over frames in memory, too: with a blend script, with a vertex
  // shader, which may place the blend anywhere, and with a parameter that reaches the default
  // blend.
  bool blends_by_gl = false;
  bool original = false;  // draws at the output's size, straight into it
};

// Nothing, with one line in *error, when the description cannot be read.
std::optional<PackageFacts> ReadPackageFacts(const std::filesystem::path& folder,
                                             std::string* error);

// The size at which a package draws its passes.
FrameSize EffectSizeOf(const PackageFacts& facts, FrameSize output);

// Whether GLSL text uses a name besides declaring it. Comments do not count.
bool ReadsName(const std::string& shader, const std::string& name);

}  // namespace krv::tool
