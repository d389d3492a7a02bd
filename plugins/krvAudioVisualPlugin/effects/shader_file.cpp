#include "effects/shader_file.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "effects/package_cipher.h"
#include "platform/file_path.h"

namespace krv {
namespace {

std::optional<std::string> ReadFile(const std::filesystem::path& path) {
  // A folder can be opened on some platforms, and a device or pipe may never end.
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return std::nullopt;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  if (error) return std::nullopt;
  std::ifstream file(path, std::ios::binary);
  std::string contents(static_cast<size_t>(size), '\0');
  if (!file.read(contents.data(), static_cast<std::streamsize>(size))) return std::nullopt;
  return contents;
}

}  // namespace

std::optional<std::string> LoadShaderFile(const std::string& path, bool enciphered) {
  std::optional<std::string> contents = ReadFile(platform::NativePath(path));
  if (contents && enciphered) contents = Decipher(*contents);
  if (contents && contents->empty()) return std::nullopt;
  return contents;
}

}  // namespace krv
