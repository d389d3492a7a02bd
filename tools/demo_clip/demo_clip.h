// A clip to show effects on.
#pragma once

#include <filesystem>

#include "media/still_source.h"

namespace krv::demo {

// Writes a movie of kMusicLength with the background and the music, at 30 frames per second; the
// name's ending chooses its format. Throws MediaError.
void WriteDemoClip(const std::filesystem::path& path, host::PictureSize size);

}  // namespace krv::demo
