#include "effects/package_cipher.h"

#include <sodium.h>

#include <cstring>
#include <stdexcept>

namespace krv {
namespace {

constexpr std::string_view kHeader("KRVE\x01", 5);  // magic, version
constexpr size_t kNonceBytes = crypto_aead_xchacha20poly1305_ietf_NPUBBYTES;
constexpr size_t kTagBytes = crypto_aead_xchacha20poly1305_ietf_ABYTES;
constexpr size_t kOverhead = kHeader.size() + kNonceBytes + kTagBytes;

constexpr unsigned char kKey[crypto_aead_xchacha20poly1305_ietf_KEYBYTES] = {
    0x03, 0xa9, 0x77, 0x73, 0x54, 0x25, 0xd0, 0x39, 0x71, 0x10, 0x43, 0xeb, 0x41, 0x4e, 0xa4, 0xdf,
    0x39, 0x9d, 0xf9, 0x16, 0x51, 0x82, 0x96, 0xa0, 0xe5, 0x2b, 0xa4, 0x90, 0x8c, 0x4d, 0x97, 0x05};

const unsigned char* Bytes(std::string_view text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}

unsigned char* Bytes(std::string& text) { return reinterpret_cast<unsigned char*>(text.data()); }

bool LibraryIsReady() {
  static const bool ready = sodium_init() >= 0;
  return ready;
}

}  // namespace

std::string Encipher(std::string_view plain) {
  if (!LibraryIsReady()) throw std::runtime_error("no source of random numbers");
  std::string file(kOverhead + plain.size(), '\0');
  std::memcpy(file.data(), kHeader.data(), kHeader.size());
  unsigned char* nonce = Bytes(file) + kHeader.size();
  unsigned char* tag = nonce + kNonceBytes;
  randombytes_buf(nonce, kNonceBytes);
  crypto_aead_xchacha20poly1305_ietf_encrypt_detached(tag + kTagBytes, tag, nullptr, Bytes(plain),
                                                      plain.size(), Bytes(kHeader), kHeader.size(),
                                                      nullptr, nonce, kKey);
  return file;
}

std::optional<std::string> Decipher(std::string_view file) {
  if (file.size() < kOverhead || !file.starts_with(kHeader) || !LibraryIsReady()) {
    return std::nullopt;
  }
  const std::string_view nonce = file.substr(kHeader.size(), kNonceBytes);
  const std::string_view tag = file.substr(kHeader.size() + kNonceBytes, kTagBytes);
  const std::string_view text = file.substr(kOverhead);
  std::string plain(text.size(), '\0');
  if (crypto_aead_xchacha20poly1305_ietf_decrypt_detached(
          Bytes(plain), nullptr, Bytes(text), text.size(), Bytes(tag), Bytes(kHeader),
          kHeader.size(), Bytes(nonce), kKey) != 0) {
    return std::nullopt;
  }
  return plain;
}

}  // namespace krv
