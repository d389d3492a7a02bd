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

// The two stages of a built-in shader's folded form, which draws the same pictures for one choice
// of its switches: "#define" lines for them, listed in the source, go after the #version lines.
// Reads the uniforms of the plain form and, from tables, what effects/folded_figure.h says.
struct FoldedShaderSource {
  std::string_view vertex;
  std::string_view fragment;
};

// The folded form of the built-in fragment shader of this name, with lifetime and languages as
// above; nothing for one that has none.
std::optional<FoldedShaderSource> FindFoldedShader(std::string_view file_name);

// The source of the fragment shader that lays an effect over the frame when a package brings none
// of its own; lifetime and languages as above. Reads the uniforms background_tex, effect_tex,
// iResolution and blend.
std::string_view DefaultBlendShader();

}  // namespace krv
