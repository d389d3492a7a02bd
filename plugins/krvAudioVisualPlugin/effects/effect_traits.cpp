#include "effects/effect_traits.h"

#include "effects/program_builder.h"

namespace krv {

EffectTraits ReadTraits(const EffectDescription& description) {
  // The blend program is drawn with the package's vertex shader, which may place it anywhere.
  const bool covers_frame = description.VertexShaderPaths().empty();
  return {.original = description.Original(),
          .blends = description.BlendEnabled(),
          .has_default_blend = covers_frame && HasDefaultBlend(description),
          .uses_human_segment = description.UsesHumanSegment(),
          .uses_mask = description.UsesMask(),
          .quality = description.Quality()};
}

}  // namespace krv
