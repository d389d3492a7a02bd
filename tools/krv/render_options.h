// What the user asked `krv render` for.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "command.h"
#include "media/frame_rate.h"
#include "media/output_format.h"
#include "media/still_source.h"
#include "media/video_encoder.h"
#include "suites.h"

namespace krv::tool {

// The options as they were typed.
struct RenderArguments {
  FileOptions files;
  std::vector<std::string> inputs;
  std::string effect;
  std::vector<std::string> parameters;  // name=value
  std::string keyframes;
  std::string output;
  std::string background;
  std::string mask;
  std::string size;
  std::string rate;
  std::string frames;
  std::string device = "memory";
  std::string preset = "veryfast";
  std::optional<int> crf;
  std::string report;
  bool transparent = false;
};

// Frames from `first` up to but not including `end`; to the last one without an end.
struct FrameRange {
  int64_t first = 0;
  std::optional<int64_t> end;

  bool IsEverything() const { return first == 0 && !end; }
};

struct BackgroundColour {
  uint8_t red = 0x12;
  uint8_t green = 0x14;
  uint8_t blue = 0x1C;
};

// The options understood; what does not depend on the files' contents is checked.
struct RenderOptions {
  std::vector<std::filesystem::path> inputs;
  std::filesystem::path output;
  host::OutputFormat format;
  bool transparent = false;  // the figure alone
  host::VideoQuality quality;
  std::filesystem::path background_picture;  // empty for a colour
  BackgroundColour background_colour;
  bool background_given = false;
  std::filesystem::path mask;       // a matte; empty for none
  std::filesystem::path keyframes;  // values over time; empty for none
  std::optional<host::PictureSize> size;
  std::optional<host::FrameRate> rate;
  FrameRange frames;
  host::DeviceUse device = host::DeviceUse::kMemory;
  std::filesystem::path report;  // empty for none
};

// Throws MediaError with one line about the first thing that is wrong.
RenderOptions ParseRenderOptions(const RenderArguments& arguments);

}  // namespace krv::tool
