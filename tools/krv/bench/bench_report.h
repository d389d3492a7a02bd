// What was measured, for people and for programs.
#pragma once

#include <filesystem>
#include <string>

#include "bench/measurement.h"

namespace krv::tool {

// One line about the machine's OpenGL and the numbers of frames and rounds.
std::string BenchHeading(const BenchResult& result);

// A few lines of one measurement.
std::string ToText(const Measurement& measurement);

// False when the file cannot be written.
bool WriteBenchJson(const BenchResult& result, const std::filesystem::path& file);

}  // namespace krv::tool
