// What the dialogues over the window have in common.
#pragma once

#include <string>

#include "studio/ui.h"

namespace krv::studio {

// Shades the window and begins a box with a heading over it; `id` tells dialogues apart.
void BeginDialog(const Ui& ui, const char* id, const char* heading);
void EndDialog();

// A small line that explains what is below or above it.
void Caption(const Ui& ui, const std::string& text);

void Wrapped(const std::string& text, ImU32 colour);

}  // namespace krv::studio
