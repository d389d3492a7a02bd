#include "effects/shader_file.h"

#include "effects/package_cipher.h"
#include "platform/file_system.h"

namespace krv {

std::optional<std::string> LoadShaderFile(const std::string& path, bool enciphered) {
  std::optional<std::string> contents = platform::ReadFile(path);
  if (contents && enciphered) contents = Decipher(*contents);
  if (contents && contents->empty()) return std::nullopt;
  return contents;
}

}  // namespace krv
