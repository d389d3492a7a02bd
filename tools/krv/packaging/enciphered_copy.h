// Copies of packages whose shader files only the plug-in reads.
#pragma once

#include <filesystem>
#include <vector>

namespace krv::tool {

// Copies the package's folder `from` into the new folder `to`, with its shader files enciphered and
// its description marked so. What else lies in the folder is copied as it is. Returns the
// enciphered files, relative to the folder. Throws PackagingError, without a trace of `to`: also
// when the package is enciphered already, has no shader file of its own, or one outside of its
// folder.
std::vector<std::filesystem::path> MakeEncipheredCopy(const std::filesystem::path& from,
                                                      const std::filesystem::path& to);

}  // namespace krv::tool
