// The window's controls. All of them mark where they lie under their identifier.
#pragma once

#include <imgui.h>

#include <string>
#include <vector>

#include "studio/icons.h"
#include "studio/ui.h"

namespace krv::studio {

enum class ButtonKind { kPlain, kPrimary };

// Whether it was pressed. `lit`: the button stands for something that is on.
bool IconButton(const Ui& ui, const char* id, Icon icon, const char* tip, bool lit = false,
                float units = 32);
bool TextButton(const Ui& ui, const char* id, const char* text, ButtonKind kind,
                bool enabled = true);

// Whether *on was changed.
bool Toggle(const Ui& ui, const char* id, bool* on);

// A choice of few; whether *chosen was changed.
bool Segments(const Ui& ui, const char* id, const std::vector<std::string>& texts, int* chosen,
              float width);

// The same as a list that opens; `tip` says of what.
bool DropDown(const Ui& ui, const char* id, const char* tip, const std::vector<std::string>& texts,
              int* chosen, float width);

// A number between limits, with a mark at `usual`; whether *value was changed. Two clicks set it to
// `usual`.
bool Slider(const Ui& ui, const char* id, float width, double* value, double minimum,
            double maximum, double usual);

// A field of colour that opens a picker; whether *rgb was changed.
bool ColourField(const Ui& ui, const char* id, int* rgb, ImVec2 size);

// Shows what the item given last is for while the mouse rests on it.
void Tip(const Ui& ui, const char* text);

// The mark of what can be opened, or closed with `up`; `half` of its width.
void DrawChevron(ImDrawList* list, ImVec2 centre, float half, bool up, ImU32 colour, float width);

// Text at a place, without moving on.
void PutText(ImDrawList* list, ImFont* font, ImVec2 at, ImU32 colour, const std::string& text);
ImVec2 SizeOf(ImFont* font, const std::string& text);

// The text cut to a width, with an ellipsis.
std::string Elide(ImFont* font, const std::string& text, float width);

// Popups with room inside.
bool BeginRoomyPopup(const Ui& ui, const char* id);
void EndRoomyPopup();

}  // namespace krv::studio
