// Tells the host about a registered effect.
#pragma once

#include <cstdint>
#include <memory>

#include "description/effect_description.h"
#include "krv/registrar.h"

namespace krv {

// Passes the effect's names, flags and parameters to `registrar`. Parameters of
// kinds 3, 5, 7, 8 and 15 are announced, in the order of the package; the others stay the
// plug-in's own. 0, or 2 for a null description.
int32_t AnnounceEffect(const std::shared_ptr<const EffectDescription>& description,
                       EffectRegistrar& registrar);

}  // namespace krv
