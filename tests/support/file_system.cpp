#include "support/file_system.h"

namespace krv::test {

std::filesystem::path Utf8Path(std::string_view text) {
  return std::u8string(text.begin(), text.end());
}

std::string Utf8Text(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

std::filesystem::path AwkwardFolder() {
  return Utf8Path("a b") / Utf8Path("Größe 音楽 пакет") / std::string(150, 'x') /
         std::string(150, 'y');
}

}  // namespace krv::test
