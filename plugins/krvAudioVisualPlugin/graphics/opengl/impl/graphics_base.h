// The plug-in's own OpenGL implementation.
#pragma once

#include <memory>
#include <mutex>
#include <string>

#include "graphics/opengl/impl/graphics_impl.h"

namespace krv {

// One per process. SetTarget and Render are serialised by a mutex; the other operations take no
// lock and must run on the thread whose GL context is current.
//
// GL state after Render: program 0, framebuffer 0, no array buffer, texture unit 0 active, the
// textures of the units used unbound; the state listed in gl_state.h as before.
class Graphics_Base final : public GraphicsImpl {
 public:
  bool Initialize() override;
  bool SetTarget(GL::Texture* texture) override;
  bool Render(const DrawDescription& draw) override;
  bool IsAvailable() override;
  std::shared_ptr<GL::Shader> CreateProgram(std::string& vertex_source,
                                            std::string& fragment_source) override;
  std::shared_ptr<GL::Texture> CreateTexture(uint32_t existing_name, uint32_t width,
                                             uint32_t height, uint32_t internal_format,
                                             uint32_t format, uint32_t type, const void* pixels,
                                             uint32_t row_length) override;
  bool ReadPixels(GL::Texture* texture, void* destination, int32_t destination_stride) override;
  bool SetUniforms(const DrawDescription& draw) override;
  bool DrawQuad(const DrawDescription& draw) override;
  bool DrawMesh(const DrawDescription& draw) override;
  bool DrawNone(const DrawDescription& draw) override;

 private:
  void DrawByMode(const DrawDescription& draw);

  GL::Texture* target_ = nullptr;  // not owned
  std::mutex mutex_;               // guards target_ and every draw
};

}  // namespace krv
