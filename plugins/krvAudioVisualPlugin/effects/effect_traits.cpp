#include "effects/effect_traits.h"

#include "effects/program_builder.h"

namespace krv {
namespace {

// A parameter reaches the blend program as well, in place of what the frame sets there. The other
// uniforms of that program are out of its reach: `background_tex` is set anew for every frame, and
// `iResolution` takes no single number.
bool ChangesBlend(const EffectDescription& description) {
  const ParameterMap& parameters = description.parameters_by_name();
  return parameters.contains("blend") || parameters.contains("effect_tex");
}

}  // namespace

EffectTraits ReadTraits(const EffectDescription& description) {
  // The blend program is drawn with the package's vertex shader, which may place it anywhere.
  const bool covers_frame = description.VertexShaderPaths().empty();
  return {.original = description.Original(),
          .blends = description.BlendEnabled(),
          .has_default_blend =
              covers_frame && HasDefaultBlend(description) && !ChangesBlend(description),
          .uses_human_segment = description.UsesHumanSegment(),
          .uses_mask = description.UsesMask(),
          .quality = description.Quality()};
}

}  // namespace krv
