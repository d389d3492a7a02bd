// The OpenGL device: forwards to the implementation that owns the GL state.
#pragma once

#include "graphics/opengl/impl/graphics_impl.h"
#include "graphics/px_graphics.h"
#include "graphics/px_graphics_context.h"

namespace krv {

class PXGraphicsContext_OpenGL : public PXGraphicsContext {
 public:
  PXGraphicsContext_OpenGL() : PXGraphicsContext(kApiOpenGl) {}
};

class PXGraphics_OpenGL : public PXGraphics {
 public:
  int32_t Initialize() override;
  int32_t SetTarget(PXImage* image) override;
  int32_t Render(const PXGraphicsContext& context) override;

  // Null until Initialize succeeded. Lives as long as the process; shared by all devices.
  GraphicsImpl* implementation() const { return implementation_; }

 private:
  GraphicsImpl* implementation_ = nullptr;
  std::vector<GL::Texture*> textures_;  // of the draw at hand
};

// A usable OpenGL device, or null.
std::shared_ptr<PXGraphics_OpenGL> CreateOpenGlGraphics();

}  // namespace krv
