// What the plug-in prints about shaders.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace krv::tool {

enum class ShaderStage { kVertex, kFragment, kLink };

// One failed step of one program.
struct ShaderFailure {
  ShaderStage stage;
  std::string log;  // the driver's
};

// One line of a driver's log.
struct DriverMessage {
  int line = 0;  // of the shader's file, from 1; 0 when the driver names none
  bool warning = false;
  std::string text;
};

// The failures in what the plug-in printed, in order.
std::vector<ShaderFailure> ParseShaderFailures(std::string_view output);

// A driver's log, taken apart; understands the forms "0:12(5): error: X" (Mesa), "0(12) : error
// C1: X" (NVIDIA) and "ERROR: 0:12: X" (the form of GLSL ES compilers). Other lines are kept whole.
std::vector<DriverMessage> ParseDriverLog(std::string_view log);

// The "GL error ..." lines in what the plug-in printed.
std::vector<std::string> ParseGlErrors(std::string_view output);

}  // namespace krv::tool
