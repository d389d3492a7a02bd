// What every frame wants to know of an effect's description, looked up once.
#pragma once

#include "description/effect_description.h"

namespace krv {

struct EffectTraits {
  bool original;           // passes draw straight into the output frame
  bool blends;             // the effect is laid over the input frame
  bool has_default_blend;  // by the default blend program alone, over the whole frame
  bool uses_human_segment;
  bool uses_mask;
  RenderQuality quality;
};

// Raises the JSON library's error when a key holds another JSON type than it should.
EffectTraits ReadTraits(const EffectDescription& description);

}  // namespace krv
