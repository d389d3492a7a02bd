// What the user asked `krv bench` for.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "command.h"
#include "suites.h"

namespace krv::tool {

// The options as they were typed.
struct BenchArguments {
  FileOptions files;  // the plug-in only
  std::vector<std::string> packages;
  std::vector<std::string> sizes;
  std::vector<std::string> forms;
  std::string quality;
  std::vector<std::string> parameters;  // name=value
  int frames = 20;
  int rounds = 5;
  int instances = 1;
  std::string json;
};

struct FrameSize {
  int width;   // pixels
  int height;  // pixels
};

// The options understood.
struct BenchSettings {
  std::vector<FrameSize> sizes;
  std::vector<host::DeviceUse> forms;
  std::optional<std::string> quality;  // instead of the packages' own
  std::vector<std::string> parameters;
  int frames;     // of a round
  int rounds;     // of frames, and as many of the limit
  int instances;  // of each effect, which take turns
};

// Nothing, with one line in *error about the first thing that is wrong.
std::optional<BenchSettings> ParseBenchSettings(const BenchArguments& arguments,
                                                std::string* error);

// "memory" or "gpu".
const char* FormName(host::DeviceUse form);

}  // namespace krv::tool
