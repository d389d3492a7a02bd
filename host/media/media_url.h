// Files by FFmpeg's names.
#pragma once

#include <filesystem>
#include <string>

namespace krv::host {

// The path as FFmpeg opens it: by the "file:" protocol, so that it is never taken for a network
// address.
std::string MediaUrl(const std::filesystem::path& path);

}  // namespace krv::host
