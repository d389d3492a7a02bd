// GraphicsImpl: the interface behind the OpenGL device.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "graphics/px_graphics_context.h"
#include "graphics/uniform_value.h"

namespace krv {

namespace GL {
class Shader;
class Texture;
}  // namespace GL

// One draw, valid for the call it is handed to.
struct DrawDescription {
  DrawMode mode = DrawMode::kQuad;
  std::span<GL::Texture* const> textures;  // unit order
  GL::Shader* program = nullptr;
  std::span<const UniformValue> uniforms;
  std::string_view mesh_attribute;
  uint64_t mesh_float_count = 0;
  const float* mesh_floats = nullptr;  // three per vertex
  bool only_in_regions = false;        // of a quad
  std::span<const TargetRegion> regions;
};

// Owns the GL entry points, the render target and the draw. Works in the GL context current on the
// calling thread. All results: true for success. The order of operations is that of the table,
// which an external implementation shares.
class GraphicsImpl {
 public:
  // Loads the GL entry points. False without a current context.
  virtual bool Initialize() = 0;
  // Directs the calling thread's draws at a texture, which the caller keeps alive; null: at
  // nothing.
  virtual bool SetTarget(GL::Texture* texture) = 0;
  // Clears the target to (0, 1, 0, 0) and draws into it. False without a target or a program.
  virtual bool Render(const DrawDescription& draw) = 0;
  // Whether a context is current and the entry points are loaded.
  virtual bool IsAvailable() = 0;
  // Compiles and links; GLSL errors are printed, and the program is returned all the same. Empties
  // both sources. Null when GL gives no program object.
  virtual std::shared_ptr<GL::Shader> CreateProgram(std::string& vertex_source,
                                                    std::string& fragment_source) = 0;
  // Makes a texture through the pool (`existing_name` = 0) or adopts the existing one, and uploads
  // `pixels` when not null, rows `row_length` pixels apart. The handle's deleter gives the name
  // back to the pool. Null when GL gives no texture.
  virtual std::shared_ptr<GL::Texture> CreateTexture(uint32_t existing_name, uint32_t width,
                                                     uint32_t height, uint32_t internal_format,
                                                     uint32_t format, uint32_t type,
                                                     const void* pixels, uint32_t row_length) = 0;
  // Reads a texture into `destination`, rows `destination_stride` bytes apart. False when either is
  // null or the texture cannot be read.
  virtual bool ReadPixels(GL::Texture* texture, void* destination, int32_t destination_stride) = 0;
  // The steps of Render, for the program in use. SetUniforms also binds the textures.
  virtual bool SetUniforms(const DrawDescription& draw) = 0;
  virtual bool DrawQuad(const DrawDescription& draw) = 0;
  virtual bool DrawMesh(const DrawDescription& draw) = 0;
  virtual bool DrawNone(const DrawDescription& draw) = 0;

 protected:
  ~GraphicsImpl() = default;
};

}  // namespace krv
