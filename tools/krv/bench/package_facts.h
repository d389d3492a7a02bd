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
  bool own_blend = false;  // lays the figure over the frame by a shader of its own
  bool original = false;   // draws at the output's size, straight into it
};

// Nothing, with one line in *error, when the description cannot be read.
std::optional<PackageFacts> ReadPackageFacts(const std::filesystem::path& folder,
                                             std::string* error);

// The size at which a package draws its passes.
FrameSize EffectSizeOf(const PackageFacts& facts, FrameSize output);

// Whether GLSL text uses a name besides declaring it. Comments do not count.
bool ReadsName(const std::string& shader, const std::string& name);

}  // namespace krv::tool
