#include "graphics/px_graphics_context.h"

#include <cstring>

namespace krv {

void PXGraphicsContext::AddUniform(std::string_view name, UniformType type, const void* data,
                                   uint32_t size) {
  UniformValue& uniform = uniforms.emplace_back();
  uniform.name = name;
  uniform.type = type;
  uniform.size = size;
  if (data == nullptr) return;
  uniform.data.resize(size + UniformValue::kSpareBytes);
  std::memcpy(uniform.data.data(), data, size);
}

}  // namespace krv
