// The diamond beside a parameter's control: whether it has keys, and one at the position.
#pragma once

#include "studio/ui.h"

namespace krv::studio {

inline constexpr float kKeyToggle = 24;  // units, its width and height

// A click sets or removes the key at the position; the other button opens a menu. Lies at the
// cursor.
void KeyToggle(const Ui& ui, const host::ParameterListing& parameter);

// A diamond, solid or its rim alone. `half`: from the centre to a corner.
void DrawDiamond(ImDrawList* list, ImVec2 centre, float half, ImU32 colour, bool solid,
                 float rim = 1.5f);

}  // namespace krv::studio
