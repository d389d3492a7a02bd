#include "effects/draw_uniforms.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <ranges>

namespace krv {
namespace {

constexpr float kOrdinary = 1e6f;

// Of the codes that a draw sets as an integer.
bool IsInteger(UniformType type) {
  return static_cast<uint32_t>(type) <= 5 || type == UniformType::kByte;
}

template <class Value>
Value ValueOf(const UniformValue& uniform) {
  Value value{};
  std::memcpy(&value, uniform.data.data(), std::min<size_t>(uniform.size, sizeof(value)));
  return value;
}

}  // namespace

const UniformValue* DrawUniforms::Find(std::string_view name) const {
  for (const UniformValue& uniform : std::views::reverse(uniforms_)) {
    if (uniform.name == name && !uniform.data.empty()) return &uniform;
  }
  return nullptr;
}

bool DrawUniforms::AllOrdinary() const {
  return std::ranges::all_of(uniforms_, [](const UniformValue& uniform) {
    if (uniform.type != UniformType::kFloat || uniform.data.empty()) return true;
    return std::abs(ValueOf<float>(uniform)) <= kOrdinary;
  });
}

int32_t DrawUniforms::Int(std::string_view name) {
  const UniformValue* found = Find(name);
  if (found == nullptr) return 0;
  sound_ = sound_ && IsInteger(found->type);
  return ValueOf<int32_t>(*found);
}

float DrawUniforms::Float(std::string_view name) {
  const UniformValue* found = Find(name);
  if (found == nullptr) return 0;
  sound_ = sound_ && found->type == UniformType::kFloat && found->size >= sizeof(float);
  return ValueOf<float>(*found);
}

std::array<float, 2> DrawUniforms::Vec2(std::string_view name) {
  const UniformValue* found = Find(name);
  if (found == nullptr) return {0, 0};
  sound_ = sound_ && found->type == UniformType::kVec2;
  return ValueOf<std::array<float, 2>>(*found);
}

}  // namespace krv
