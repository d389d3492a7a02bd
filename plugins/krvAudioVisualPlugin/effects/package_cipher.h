// The cipher of packages that ship their shader files enciphered ("ENCRYPT": "1").
//
// This is obfuscation, not protection: the key is part of the library, so whoever has the library
// can read every enciphered file. It keeps shader sources from casual reading and makes a damaged
// or exchanged file fail to load instead of drawing something else.
//
// An enciphered file is, byte by byte:
//   0   4  magic "KRVE"
//   4   1  version, 1
//   5  24  nonce, random for each file
//  29  16  tag
//  45      XChaCha20-Poly1305 ciphertext, as long as the text; magic and version are authenticated
//
// Pure functions of their arguments (and of the system's random numbers), for any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace krv {

// The contents of an enciphered file that holds `plain`. Each call gives another file. Throws
// std::runtime_error when the system has no source of random numbers.
std::string Encipher(std::string_view plain);

// The text that an enciphered file's contents hold; nothing when they are of another format or
// version, shortened or changed in any byte.
std::optional<std::string> Decipher(std::string_view file);

}  // namespace krv
