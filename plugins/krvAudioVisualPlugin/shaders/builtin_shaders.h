// The fragment shaders that are part of the plug-in. All functions may be called on any thread,
// with or without a GL context.
#pragma once

#include <optional>
#include <string_view>

namespace krv {

// The source of the built-in fragment shader with exactly this file name (no folder), for example
// "audio_visualization_geometry.frag"; nothing for any other name. The text lives as long as the
// library, begins with its #version line and compiles as GLSL 1.20, GLSL ES 1.00 and, with
// that line exchanged, GLSL ES 3.00. It is not NUL-terminated by contract.
std::optional<std::string_view> FindBuiltinShader(std::string_view file_name);

// The source of the fragment shader that lays an effect over the frame when a package brings none
// of its own; lifetime and languages as above. Reads the uniforms background_tex, effect_tex,
// iResolution and blend.
std::string_view DefaultBlendShader();

}  // namespace krv
