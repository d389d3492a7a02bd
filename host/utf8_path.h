// Paths as UTF-8 texts: the form in which they cross the boundary and appear in messages.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace krv::host {

std::string Utf8(const std::filesystem::path& path);
std::filesystem::path PathFromUtf8(std::string_view text);

}  // namespace krv::host
