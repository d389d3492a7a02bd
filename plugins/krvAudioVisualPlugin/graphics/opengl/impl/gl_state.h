// GL state that belongs to the host: set to what our work needs, then put back.
#pragma once

#include <glad/gl.h>

#include <array>
#include <cstddef>
#include <opencv2/core/utility.hpp>

namespace krv::GL {

// For one draw: depth test and mask, blending, scissor, culling, stencil, logic operation,
// discarding, conversion to sRGB and alpha test off, polygons filled, every colour channel written,
// a vertex array object of its own. Puts these, clear colour and viewport back on destruction. Of
// what there is one of for each draw buffer, that of buffer 0 alone is changed; the scissor test
// and the viewport are set for all viewports there are.
class ScopedDrawState {
 public:
  ScopedDrawState();
  ScopedDrawState(const ScopedDrawState&) = delete;
  ScopedDrawState& operator=(const ScopedDrawState&) = delete;
  ~ScopedDrawState();

 private:
  // The last is of compatibility contexts alone.
  static constexpr std::array<GLenum, 9> kCapabilities = {
      GL_DEPTH_TEST,   GL_BLEND,          GL_SCISSOR_TEST,       GL_CULL_FACE,
      GL_STENCIL_TEST, GL_COLOR_LOGIC_OP, GL_RASTERIZER_DISCARD, GL_FRAMEBUFFER_SRGB,
      GL_ALPHA_TEST};
  size_t capability_count_;
  std::array<GLboolean, kCapabilities.size()> enabled_{};
  std::array<GLint, 2> polygon_mode_{};
  GLboolean depth_mask_ = GL_TRUE;
  std::array<GLboolean, 4> color_mask_{};
  std::array<GLfloat, 4> clear_color_{};
  std::array<GLint, 4> viewport_{};
  GLint host_vertex_array_ = 0;
  GLuint vertex_array_ = 0;  // 0 where the driver has none
};

// For one draw: pixels are cut to the parts of the target that Cut names, one after the other. Puts
// the scissor box back and leaves the scissor off, as ScopedDrawState has it, on destruction.
class ScopedScissor {
 public:
  ScopedScissor();
  ScopedScissor(const ScopedScissor&) = delete;
  ScopedScissor& operator=(const ScopedScissor&) = delete;
  ~ScopedScissor();

  void Cut(GLint x, GLint y, GLsizei width, GLsizei height) { glScissor(x, y, width, height); }

 private:
  std::array<GLint, 4> box_{};
};

// For one draw: no sampler object of the host's on the first `units` texture units, whose filters
// would take the place of the textures' own. Puts them back on destruction.
class ScopedSamplers {
 public:
  explicit ScopedSamplers(size_t units);
  ScopedSamplers(const ScopedSamplers&) = delete;
  ScopedSamplers& operator=(const ScopedSamplers&) = delete;
  ~ScopedSamplers();

 private:
  cv::AutoBuffer<GLuint, 16> samplers_;  // by unit; empty where the driver has no sampler objects
};

// For one transfer: rows `row_length` pixels apart (0: tight), byte alignment 1, nothing skipped or
// swapped. Puts the pixel-store values back on destruction.
class ScopedPixelStore {
 public:
  enum class Direction { kUpload, kReadBack };

  ScopedPixelStore(Direction direction, GLint row_length);
  ScopedPixelStore(const ScopedPixelStore&) = delete;
  ScopedPixelStore& operator=(const ScopedPixelStore&) = delete;
  ~ScopedPixelStore();

 private:
  static constexpr size_t kCount = 6;
  const std::array<GLenum, kCount>& names_;
  std::array<GLint, kCount> values_{};
};

}  // namespace krv::GL
