// Packages named on the command line.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace krv::tool {

// The package folders that the user means: each a package itself, its "description.json", or a
// folder with packages somewhere under it. Nothing, with one line in *error, when one of them is
// none of these.
std::optional<std::vector<std::filesystem::path>> PackageFolders(
    const std::vector<std::string>& wishes, std::string* error);

}  // namespace krv::tool
