#include "effects/shader_file.h"

#include <stdexcept>

#include "description/package_limits.h"
#include "effects/package_cipher.h"
#include "platform/file_system.h"

namespace krv {
namespace {

std::optional<std::string> ReadShaderFile(const std::string& path) {
  try {
    return platform::ReadFile(path, kLargestPackageFile);
  } catch (const std::length_error& error) {
    throw std::runtime_error(path + ": " + error.what());
  }
}

}  // namespace

std::optional<std::string> LoadShaderFile(const std::string& path,
                                          const std::string& package_folder, bool enciphered) {
  std::optional<std::string> contents = ReadShaderFile(path);
  if (contents && !platform::IsBelow(path, package_folder)) {
    throw std::runtime_error(path + ": the file is outside of its package");
  }
  if (contents && enciphered) contents = Decipher(*contents);
  if (contents && contents->empty()) return std::nullopt;
  return contents;
}

}  // namespace krv
