#include "shaders/builtin_shaders.h"

#include <initializer_list>
#include <map>
#include <string>

#include "shader_sources.h"

namespace krv {
namespace {

using shaders::k_audio_visualization_geometry_frag_glsl;
using shaders::k_blend_frag_glsl;
using shaders::k_common_glsl;
using shaders::k_output_glsl;
using shaders::k_version_glsl;

std::string Join(std::initializer_list<std::string_view> pieces) {
  std::string text;
  for (std::string_view piece : pieces) text += piece;
  return text;
}

using Catalogue = std::map<std::string, std::string, std::less<>>;

const Catalogue& BuiltinShaders() {
  static const Catalogue catalogue = {
      {"audio_visualization_geometry.frag", Join({k_version_glsl, k_output_glsl, k_common_glsl,
                                                  k_audio_visualization_geometry_frag_glsl})},
  };
  return catalogue;
}

}  // namespace

std::optional<std::string_view> FindBuiltinShader(std::string_view file_name) {
  const auto found = BuiltinShaders().find(file_name);
  if (found == BuiltinShaders().end()) return std::nullopt;
  return found->second;
}

std::string_view DefaultBlendShader() {
  static const std::string source = Join({k_version_glsl, k_output_glsl, k_blend_frag_glsl});
  return source;
}

}  // namespace krv
