// Loading the shader files that packages name.
#pragma once

#include <optional>
#include <string>

namespace krv {

// The whole contents of a package file, byte for byte: no line end is converted. `path` is UTF-8,
// its parts separated by slashes or backslashes; `enciphered` files are deciphered.
//
// Nothing when the path names no regular file, the file cannot be read or deciphered, or there is
// no text in it: an empty file is no shader.
std::optional<std::string> LoadShaderFile(const std::string& path, bool enciphered);

}  // namespace krv
