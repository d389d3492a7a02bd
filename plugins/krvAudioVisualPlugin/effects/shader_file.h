// Loading the shader files that packages name.
#pragma once

#include <optional>
#include <string>

namespace krv {

// The whole contents of a package file, byte for byte: no line end is converted. `path` and
// `package_folder` are UTF-8, their parts separated by slashes or backslashes; `enciphered` files
// are deciphered.
//
// Nothing when the path names no regular file, the file cannot be read or deciphered, or there is
// no text in it: an empty file is no shader. Throws std::runtime_error, naming the file, when it
// lies outside of the package, by its name or by a link, and when it is larger than
// kLargestPackageFile.
std::optional<std::string> LoadShaderFile(const std::string& path,
                                          const std::string& package_folder, bool enciphered);

}  // namespace krv
