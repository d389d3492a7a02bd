#include "shaders/builtin_shaders.h"

#include <initializer_list>
#include <map>
#include <string>

#include "shader_sources.h"

namespace krv {
namespace {

using shaders::k_audio_visualization_geometry_frag_glsl;
using shaders::k_audio_visualization_halo_geometry_frag_glsl;
using shaders::k_audio_visualization_halo_spectrum_frag_glsl;
using shaders::k_blend_frag_glsl;
using shaders::k_common_glsl;
using shaders::k_es_extension_glsl;
using shaders::k_flat_folded_frag_glsl;
using shaders::k_flat_folded_glsl;
using shaders::k_flat_folded_vert_glsl;
using shaders::k_flat_glsl;
using shaders::k_halo_glsl;
using shaders::k_output_glsl;
using shaders::k_version_glsl;

std::string Join(std::initializer_list<std::string_view> pieces) {
  std::string text;
  for (std::string_view piece : pieces) text += piece;
  return text;
}

std::string Halo(std::string_view figures) {
  return Join(
      {k_version_glsl, k_es_extension_glsl, k_output_glsl, k_common_glsl, k_halo_glsl, figures});
}

using Catalogue = std::map<std::string, std::string, std::less<>>;

const Catalogue& BuiltinShaders() {
  static const Catalogue catalogue = {
      {"audio_visualization_geometry.frag",
       Join({k_version_glsl, k_output_glsl, k_common_glsl, k_flat_glsl,
             k_audio_visualization_geometry_frag_glsl})},
      {"audio_visualization_halo_geometry.frag",
       Halo(k_audio_visualization_halo_geometry_frag_glsl)},
      {"audio_visualization_halo_spectrum.frag",
       Halo(k_audio_visualization_halo_spectrum_frag_glsl)},
  };
  return catalogue;
}

struct FoldedText {
  std::string vertex;
  std::string fragment;
};

std::string FoldedFlat(std::string_view stage) {
  return Join(
      {k_version_glsl, k_output_glsl, k_common_glsl, k_flat_glsl, k_flat_folded_glsl, stage});
}

using FoldedCatalogue = std::map<std::string, FoldedText, std::less<>>;

const FoldedCatalogue& FoldedShaders() {
  static const FoldedCatalogue catalogue = {
      {"audio_visualization_geometry.frag",
       {FoldedFlat(k_flat_folded_vert_glsl), FoldedFlat(k_flat_folded_frag_glsl)}},
  };
  return catalogue;
}

}  // namespace

std::optional<std::string_view> FindBuiltinShader(std::string_view file_name) {
  const auto found = BuiltinShaders().find(file_name);
  if (found == BuiltinShaders().end()) return std::nullopt;
  return found->second;
}

std::optional<FoldedShaderSource> FindFoldedShader(std::string_view file_name) {
  const auto found = FoldedShaders().find(file_name);
  if (found == FoldedShaders().end()) return std::nullopt;
  return FoldedShaderSource{found->second.vertex, found->second.fragment};
}

std::string_view DefaultBlendShader() {
  static const std::string source = Join({k_version_glsl, k_output_glsl, k_blend_frag_glsl});
  return source;
}

}  // namespace krv
