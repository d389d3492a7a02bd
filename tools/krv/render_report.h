// What came out of a render, for people and for programs.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "render_input.h"

namespace krv::tool {

// Seconds in which each stage was at work, without those in which it waited for another. The first
// three work at the same time: their sum can be more than the whole, and where all processors are
// taken each one's share includes its wait for a processor.
struct StageTimes {
  double decode = 0;  // with the conversion from the file's pixel format
  double render = 0;
  double encode = 0;  // with the conversion to the file's pixel format
  double finish = 0;  // what encoders held back, and the file's end
};

struct RenderResult {
  int64_t frames = 0;
  int64_t frames_without_person = 0;  // of these; shown as they came
  double seconds = 0;                 // from the first frame to the finished file
  StageTimes stages;
  bool interrupted = false;

  double FramesPerSecond() const { return seconds > 0 ? static_cast<double>(frames) / seconds : 0; }
};

// One line: "270 frames in 9.1 s (29.7 fps): out.mp4".
std::string Summary(const RenderResult& result, const std::filesystem::path& output);

// Writes the JSON report. Throws MediaError when the file cannot be written.
void WriteReport(const RenderResult& result, const RenderOptions& options, const RenderInput& input,
                 const std::string& gl_renderer);

}  // namespace krv::tool
