// Symbols drawn with lines, so that no font of symbols is needed.
#pragma once

#include <imgui.h>

namespace krv::studio {

enum class Icon {
  kPlay,
  kPause,
  kLoop,
  kSound,
  kMuted,
  kSun,
  kMoon,
  kReset,
  kWarning,
  kClose,
  kKeyBack,
  kKeyOn
};

// Draws the symbol into a square of that size around `centre`.
void DrawIcon(ImDrawList* list, Icon icon, ImVec2 centre, float size, ImU32 colour);

}  // namespace krv::studio
