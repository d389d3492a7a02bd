#include "support/file_system.h"

namespace krv::test {

std::filesystem::path Utf8Path(std::string_view text) {
  return std::u8string(text.begin(), text.end());
}

std::string Utf8Text(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

}  // namespace krv::test
