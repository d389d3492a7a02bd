// Files of keyframes as the studio reads and writes them.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "keyframes/parameter_tracks.h"
#include "registrar.h"

namespace krv::studio {

// Nothing, with one line in *error that names file, line and reason, when the file is not one for
// this effect.
std::optional<tool::ParameterTracks> LoadKeyframes(const std::filesystem::path& file,
                                                   const host::EffectListing& effect,
                                                   const host::FrameRate& rate, std::string* error);

// Writes the file as SaveFile does. False, with one line in *error, when it cannot.
bool SaveKeyframes(const std::filesystem::path& file, const std::string& text, std::string* error);

}  // namespace krv::studio
