// The plug-in's own OpenGL implementation.
#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "graphics/opengl/impl/graphics_impl.h"

namespace krv {

// One per process. SetTarget and Render are serialised by a mutex; the other operations take no
// lock and must run on the thread whose GL context is current. Each thread has a target of its own:
// a name means nothing in another thread's context, and threads set their targets while others are
// about to draw.
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
  GL::Texture* Target() const;
  bool DrawByMode(const DrawDescription& draw);

  struct ThreadTarget {
    std::thread::id thread;
    GL::Texture* texture;  // not owned; never null
  };

  std::vector<ThreadTarget> targets_;  // those that draw at the moment: few
  std::mutex mutex_;                   // guards targets_ and every draw
};

}  // namespace krv
