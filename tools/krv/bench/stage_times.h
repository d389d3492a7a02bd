// What the plug-in tells of its stages.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "bench/figures.h"

namespace krv::tool {

// When this variable of the environment is set to 1, the plug-in waits for GL after each stage of a
// frame and logs what the stages took.
inline constexpr char kStageVariable[] = "KRV_FRAME_TIMES";

// Stages of one frame in their order, in microseconds.
using StageTimes = std::vector<std::pair<std::string, double>>;

// Takes a log line apart: "<audio_visual> Frame times (us) : audio=21 pass1=1300". Empty for other
// lines.
StageTimes ParseStageTimes(std::string_view line);

// The usual time of each stage, in milliseconds, in the order in which stages first appear.
std::vector<NamedSpread> StageSpreads(const std::vector<StageTimes>& frames);

}  // namespace krv::tool
