#include "shaders/builtin_shaders.h"

#include <initializer_list>
#include <map>
#include <string>

#include "shader_sources.h"

namespace krv {
namespace {

using namespace shaders;  // NOLINT(google-build-using-namespace): the embedded texts

using Pieces = std::initializer_list<std::string_view>;

std::string Join(Pieces pieces) {
  std::string text;
  for (std::string_view piece : pieces) text += piece;
  return text;
}

std::string Flat(Pieces pieces) {
  return Join({k_version_glsl, k_output_glsl, k_common_glsl, k_flat_glsl}) + Join(pieces);
}

std::string Halo(Pieces pieces) {
  return Join({k_version_glsl, k_es_extension_glsl, k_output_glsl, k_common_glsl, k_halo_glsl}) +
         Join(pieces);
}

using Catalogue = std::map<std::string, std::string, std::less<>>;

const Catalogue& BuiltinShaders() {
  static const Catalogue catalogue = {
      {"audio_visualization_geometry.frag", Flat({k_audio_visualization_geometry_frag_glsl})},
      {"audio_visualization_halo_geometry.frag",
       Halo({k_halo_geometry_glsl, k_halo_plain_glsl,
             k_audio_visualization_halo_geometry_frag_glsl})},
      {"audio_visualization_halo_spectrum.frag",
       Halo({k_halo_spectrum_glsl, k_halo_plain_glsl,
             k_audio_visualization_halo_spectrum_frag_glsl})},
  };
  return catalogue;
}

struct FoldedText {
  std::string vertex;
  std::string fragment;
};

FoldedText FoldedFlat() {
  return {Flat({k_folded_glsl, k_flat_folded_glsl, k_folded_vert_glsl, k_flat_folded_vert_glsl}),
          Flat({k_folded_glsl, k_flat_folded_glsl, k_folded_frag_glsl, k_flat_folded_frag_glsl})};
}

// What the figures' plain form shares, and what their folded form shares and adds.
FoldedText FoldedHalo(std::string_view figures, std::string_view folded, std::string_view vertex,
                      std::string_view fragment) {
  return {Halo({figures, k_folded_glsl, k_halo_folded_glsl, folded, k_folded_vert_glsl,
                k_halo_folded_vert_glsl, vertex}),
          Halo({figures, k_folded_glsl, k_halo_folded_glsl, folded, k_folded_frag_glsl,
                k_halo_folded_frag_glsl, fragment})};
}

using FoldedCatalogue = std::map<std::string, FoldedText, std::less<>>;

const FoldedCatalogue& FoldedShaders() {
  static const FoldedCatalogue catalogue = {
      {"audio_visualization_geometry.frag", FoldedFlat()},
      {"audio_visualization_halo_geometry.frag",
       FoldedHalo(k_halo_geometry_glsl, k_halo_geometry_folded_glsl,
                  k_halo_geometry_folded_vert_glsl, k_halo_geometry_folded_frag_glsl)},
      {"audio_visualization_halo_spectrum.frag",
       FoldedHalo(k_halo_spectrum_glsl, k_halo_spectrum_folded_glsl,
                  k_halo_spectrum_folded_vert_glsl, k_halo_spectrum_folded_frag_glsl)},
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
