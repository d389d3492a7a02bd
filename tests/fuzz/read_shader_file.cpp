#include <string>

#include "effects/package_cipher.h"
#include "fuzz/require.h"
#include "fuzz/targets.h"

namespace krv::fuzz {
namespace {

// A file of the text with one of its bytes changed, chosen by the text.
std::string Damaged(std::string_view text) {
  std::string file = Encipher(text);
  const size_t sum = std::hash<std::string_view>()(text);
  file[sum % file.size()] ^= static_cast<char>(1 << (sum / file.size() % 8));
  return file;
}

}  // namespace

void ReadShaderFile(std::string_view bytes) {
  if (const auto text = Decipher(bytes)) {
    Require(text->size() < bytes.size(), "a file is longer than its text");
  }
  Require(Decipher(Encipher(bytes)) == bytes, "what is enciphered is deciphered");
  Require(!Decipher(Damaged(bytes)), "a damaged file is refused");
}

}  // namespace krv::fuzz
