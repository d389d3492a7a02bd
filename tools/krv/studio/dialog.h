// What the dialogues over the window have in common.
#pragma once

#include <string>

#include "studio/ui.h"
#include "studio/written_files.h"

namespace krv::studio {

// Shades the window and begins a box with a heading over it; `id` tells dialogues apart.
void BeginDialog(const Ui& ui, const char* id, const char* heading);
void EndDialog();

// A small line that explains what is below or above it.
void Caption(const Ui& ui, const std::string& text);

void Wrapped(const std::string& text, ImU32 colour);

// A field for the name of the file to write. Whether Enter was pressed in it.
bool FileField(const Ui& ui, const char* id, std::string* name);

// What there is to say about the name: a problem, or what would be replaced, or else `hint`.
void FileRemark(const Ui& ui, const std::string& problem, Replaces replaces, const char* hint);

// The button that writes the file, which says so where it would replace one. Whether to write it;
// `entered`: Enter was pressed in the field, which never writes over what is there.
bool WriteButton(const Ui& ui, const char* id, const char* text, Replaces replaces, bool entered,
                 bool enabled);

}  // namespace krv::studio
