// A clip to show effects on.
#pragma once

#include <filesystem>
#include <functional>

#include "media/still_source.h"

namespace krv::demo {

// Writes a movie of kMusicLength with the background and the music, at 30 frames per second; the
// name's ending chooses its format. Returns false, and leaves no file, when `go_on`, asked before
// every frame, does. Throws MediaError.
bool WriteDemoClip(const std::filesystem::path& path, host::PictureSize size,
                   const std::function<bool()>& go_on);

}  // namespace krv::demo
