#include "graphics/opengl/impl/gl_state.h"

namespace krv::GL {
namespace {

constexpr std::array<GLenum, 6> kUnpackNames = {GL_UNPACK_ALIGNMENT,   GL_UNPACK_ROW_LENGTH,
                                                GL_UNPACK_SKIP_PIXELS, GL_UNPACK_SKIP_ROWS,
                                                GL_UNPACK_SWAP_BYTES,  GL_UNPACK_LSB_FIRST};
constexpr std::array<GLenum, 6> kPackNames = {GL_PACK_ALIGNMENT,   GL_PACK_ROW_LENGTH,
                                              GL_PACK_SKIP_PIXELS, GL_PACK_SKIP_ROWS,
                                              GL_PACK_SWAP_BYTES,  GL_PACK_LSB_FIRST};

// Blending and colour mask are those of draw buffer 0, our only one: the host may have set its
// others apart, where the driver lets it.
void Enable(GLenum capability, bool enabled) {
  if (capability == GL_BLEND && GLAD_GL_VERSION_3_0) {
    (enabled ? glEnablei : glDisablei)(capability, 0);
  } else {
    (enabled ? glEnable : glDisable)(capability);
  }
}

void SetColorMask(const std::array<GLboolean, 4>& mask) {
  if (GLAD_GL_VERSION_3_0) {
    glColorMaski(0, mask[0], mask[1], mask[2], mask[3]);
  } else {
    glColorMask(mask[0], mask[1], mask[2], mask[3]);
  }
}

bool IsCompatibilityContext() {
  if (!GLAD_GL_VERSION_3_2) return true;  // there was no other kind yet
  GLint profile = 0;
  glGetIntegerv(GL_CONTEXT_PROFILE_MASK, &profile);
  return (profile & GL_CONTEXT_CORE_PROFILE_BIT) == 0;
}

}  // namespace

ScopedDrawState::ScopedDrawState()
    : capability_count_(kCapabilities.size() - (IsCompatibilityContext() ? 0 : 1)) {
  for (size_t i = 0; i < capability_count_; ++i) {
    enabled_[i] = glIsEnabled(kCapabilities[i]);
    if (enabled_[i]) Enable(kCapabilities[i], false);
  }
  glGetIntegerv(GL_POLYGON_MODE, polygon_mode_.data());
  if (polygon_mode_[0] != GL_FILL) glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
  glGetBooleanv(GL_DEPTH_WRITEMASK, &depth_mask_);
  glGetBooleanv(GL_COLOR_WRITEMASK, color_mask_.data());
  glGetFloatv(GL_COLOR_CLEAR_VALUE, clear_color_.data());
  glGetIntegerv(GL_VIEWPORT, viewport_.data());
  glDepthMask(GL_FALSE);
  SetColorMask({GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE});
  if (glad_glBindVertexArray != nullptr) {
    glGetIntegerv(GL_VERTEX_ARRAY_BINDING, &host_vertex_array_);
    glGenVertexArrays(1, &vertex_array_);
    glBindVertexArray(vertex_array_);
  }
}

ScopedDrawState::~ScopedDrawState() {
  for (size_t i = 0; i < capability_count_; ++i) Enable(kCapabilities[i], enabled_[i]);
  if (polygon_mode_[0] != GL_FILL) {
    glPolygonMode(GL_FRONT_AND_BACK, static_cast<GLenum>(polygon_mode_[0]));
  }
  glDepthMask(depth_mask_);
  SetColorMask(color_mask_);
  glClearColor(clear_color_[0], clear_color_[1], clear_color_[2], clear_color_[3]);
  glViewport(viewport_[0], viewport_[1], viewport_[2], viewport_[3]);
  if (vertex_array_ != 0) {
    glBindVertexArray(static_cast<GLuint>(host_vertex_array_));
    glDeleteVertexArrays(1, &vertex_array_);
  }
}

ScopedScissor::ScopedScissor() {
  glGetIntegerv(GL_SCISSOR_BOX, box_.data());
  glEnable(GL_SCISSOR_TEST);
}

ScopedScissor::~ScopedScissor() {
  glDisable(GL_SCISSOR_TEST);
  glScissor(box_[0], box_[1], box_[2], box_[3]);
}

ScopedSamplers::ScopedSamplers(size_t units)
    : samplers_(glad_glBindSampler == nullptr ? 0 : units) {
  for (GLuint unit = 0; unit < samplers_.size(); ++unit) {
    GLint sampler = 0;
    glActiveTexture(GL_TEXTURE0 + unit);
    glGetIntegerv(GL_SAMPLER_BINDING, &sampler);
    if (sampler != 0) glBindSampler(unit, 0);
    samplers_[unit] = static_cast<GLuint>(sampler);
  }
}

ScopedSamplers::~ScopedSamplers() {
  for (GLuint unit = 0; unit < samplers_.size(); ++unit) {
    if (samplers_[unit] != 0) glBindSampler(unit, samplers_[unit]);
  }
}

ScopedPixelStore::ScopedPixelStore(Direction direction, GLint row_length)
    : names_(direction == Direction::kUpload ? kUnpackNames : kPackNames) {
  const std::array<GLint, kCount> wanted = {1, row_length, 0, 0, 0, 0};
  for (size_t i = 0; i < kCount; ++i) {
    glGetIntegerv(names_[i], &values_[i]);
    if (values_[i] != wanted[i]) glPixelStorei(names_[i], wanted[i]);
  }
}

ScopedPixelStore::~ScopedPixelStore() {
  for (size_t i = 0; i < kCount; ++i) glPixelStorei(names_[i], values_[i]);
}

}  // namespace krv::GL
