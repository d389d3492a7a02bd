#include "graphics/px_graphics_context.h"

#include <cstring>
#include <utility>

namespace krv {

void PXGraphicsContext::AddUniform(std::string_view name, UniformType type, const void* data,
                                   uint32_t size) {
  if (spare_uniforms_.empty()) spare_uniforms_.emplace_back();
  UniformValue& uniform = uniforms.emplace_back(std::move(spare_uniforms_.back()));
  spare_uniforms_.pop_back();
  uniform.name = name;
  uniform.type = type;
  uniform.size = size;
  uniform.data.clear();
  if (data == nullptr) return;
  uniform.data.resize(size + UniformValue::kSpareBytes);
  std::memcpy(uniform.data.data(), data, size);
}

void PXGraphicsContext::Reset() {
  // So that each place in the next draw gets the memory that it had in this one.
  for (; !uniforms.empty(); uniforms.pop_back()) {
    spare_uniforms_.push_back(std::move(uniforms.back()));
  }
  draw_mode = DrawMode::kQuad;
  only_in_regions = false;
  regions.clear();
  images.clear();
  program.reset();
  mesh_attribute.clear();
  mesh_vertices.clear();
}

}  // namespace krv
