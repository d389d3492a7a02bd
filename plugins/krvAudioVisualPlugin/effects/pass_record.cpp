#include "effects/pass_record.h"

#include "effects/folded_shader.h"
#include "graphics/px_graphics_context.h"

namespace krv {
namespace {

void AddUniformOfKind(PXGraphicsContext& draw, const std::string& name,
                      const ParameterValue& value) {
  switch (value.kind) {
    case kKindInt:
    case kKindIntInternal:
      draw.AddUniform(name, UniformType::kInt, &value.as_int, sizeof(value.as_int));
      break;
    case kKindFloat:
      draw.AddUniform(name, UniformType::kFloat, &value.as_float, sizeof(value.as_float));
      break;
    case kKindDouble:
      draw.AddUniform(name, UniformType::kDouble, &value.as_double, sizeof(value.as_double));
      break;
    case kKindBool: {
      const int32_t truth = value.as_bool;
      draw.AddUniform(name, UniformType::kInt, &truth, sizeof(truth));
      break;
    }
    default:
      break;
  }
}

// Without stops a built-in shader's gradient is black, whatever its texture holds.
bool HasUnreadGradient(const PassRecord& record) {
  return record.is_builtin && !record.uniforms.contains("gradient_color_tex") &&
         !record.uniforms.contains("gradient_color_count");
}

}  // namespace

PassRecord::PassRecord() = default;
PassRecord::~PassRecord() = default;

void StoreUniform(PassRecord& record, std::string_view name, const ParameterValue& value) {
  if (value.kind == kKindText) return;
  const std::lock_guard lock(record.mutex);
  const auto found = record.uniforms.find(name);
  if (found == record.uniforms.end()) {
    record.uniforms.emplace(name, value);
  } else {
    found->second = value;
  }
}

bool HoldsUniform(PassRecord& record, std::string_view name) {
  const std::lock_guard lock(record.mutex);
  return record.uniforms.contains(name);
}

bool ReadsUnit(PassRecord& record, int32_t unit) {
  const std::lock_guard lock(record.mutex);
  const bool has_unread_gradient = HasUnreadGradient(record);
  for (const std::string& name : record.samplers) {
    if (has_unread_gradient && name == "gradient_color_tex") continue;
    const auto set = record.uniforms.find(name);
    if ((set == record.uniforms.end() ? 0 : set->second.as_int) == unit) return true;
  }
  return false;
}

void AddUniforms(PXGraphicsContext& draw, PassRecord& record) {
  const std::lock_guard lock(record.mutex);
  for (const auto& [name, value] : record.uniforms) AddUniformOfKind(draw, name, value);
}

}  // namespace krv
