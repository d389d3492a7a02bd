// Folders with everything under them.
#pragma once

#include <filesystem>

namespace krv::host {

// Copies what the folder `from` holds into the existing folder `to`, which must not lie inside it;
// links are followed. Throws std::filesystem::filesystem_error.
void CopyTree(const std::filesystem::path& from, const std::filesystem::path& to);

// Removes the folder with everything in it, as far as possible; links are not followed.
void RemoveTree(const std::filesystem::path& folder);

}  // namespace krv::host
