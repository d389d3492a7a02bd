// Showing files to the user.
#pragma once

#include <filesystem>
#include <string>

namespace krv::tool {

// Opens the file in the program that the desktop has for it, and does not wait for it. False, with
// the reason in *error, when there is none.
bool OpenFile(const std::filesystem::path& file, std::string* error);

}  // namespace krv::tool
