// One uniform of one draw.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace krv {

// How a uniform's bytes are handed to GL. Codes not named here are ignored by a draw.
enum class UniformType : uint32_t {
  // Codes 0 to 5: up to 4 bytes, copied into a zeroed 32-bit integer.
  kInt = 4,
  kFloat = 8,
  kDouble = 9,  // ignored: GLSL 1.20 has no such uniform
  kByte = 10,   // one byte, set as an integer; for bool
  kVec2 = 11,
  kVec3 = 12,
  kVec4 = 13,
  kMat2 = 14,  // matrices are column-major and not transposed
  kMat3 = 15,
  kMat4 = 16,
};

struct UniformValue {
  // Bytes allocated beyond `size`, zero, so that a reader of a wider type stays inside.
  static constexpr size_t kSpareBytes = 8;

  std::string name;
  UniformType type;
  std::vector<std::byte> data;  // size + kSpareBytes bytes; empty when there is no data
  uint32_t size;                // bytes
};

}  // namespace krv
