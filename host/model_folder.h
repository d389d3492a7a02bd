// Where the user's AI models are.
#pragma once

#include <filesystem>

namespace krv::host {

// models/ beside the program, or ../share/krv/models/ from `program_folder` where the program is
// installed. It need not exist.
std::filesystem::path ModelFolder(const std::filesystem::path& program_folder);

}  // namespace krv::host
