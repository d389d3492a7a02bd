// The programs of an effect.
#pragma once

#include <memory>
#include <vector>

#include "description/effect_description.h"
#include "effects/pass_record.h"

namespace krv {

class PXProgram;

struct EffectPrograms {
  std::vector<std::unique_ptr<PassRecord>> passes;  // one per fragment shader, in order
  std::shared_ptr<PXProgram> blend;
};

// Whether the package leaves the blend to the default shader.
bool HasDefaultBlend(const EffectDescription& description);

// Builds every program of the description: fragment shaders from the catalogue of built-in ones
// (only for a description without a version) or from the package's files, with the package's first
// vertex shader or the default one. False on the first failure, which is logged. Needs a current GL
// context.
bool BuildPrograms(const EffectDescription& description, EffectPrograms& programs);

}  // namespace krv
