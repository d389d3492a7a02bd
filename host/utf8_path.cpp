#include "utf8_path.h"

namespace krv::host {

std::string Utf8(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {reinterpret_cast<const char*>(text.data()), text.size()};
}

std::filesystem::path PathFromUtf8(std::string_view text) {
  return std::u8string(reinterpret_cast<const char8_t*>(text.data()), text.size());
}

}  // namespace krv::host
