// What the uniforms of a draw hold, as a shader would read them.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "graphics/uniform_value.h"

namespace krv {

// Reads a draw's uniforms, which must outlive it. A name that is not among them reads as 0, as in a
// shader; of a name's values the last counts.
class DrawUniforms {
 public:
  explicit DrawUniforms(std::span<const UniformValue> uniforms) : uniforms_(uniforms) {}

  // Whether every float of the draw is a number of ordinary size, and everything read so far was of
  // the kind asked for. Otherwise what was read means nothing.
  bool sound() const { return sound_ && AllOrdinary(); }

  int32_t Int(std::string_view name);
  bool Bool(std::string_view name) { return Int(name) != 0; }
  float Float(std::string_view name);
  std::array<float, 2> Vec2(std::string_view name);

 private:
  const UniformValue* Find(std::string_view name) const;
  bool AllOrdinary() const;

  std::span<const UniformValue> uniforms_;
  bool sound_ = true;
};

}  // namespace krv
