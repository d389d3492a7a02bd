#include "graphics/opengl/px_graphics_opengl.h"

#include <mutex>

#include "graphics/opengl/impl/gl_check.h"
#include "graphics/opengl/impl/graphics_base.h"
#include "graphics/px_image.h"
#include "graphics/px_program.h"
#include "memory/frame_memory.h"
#include "platform/dynamic_library.h"

namespace krv {
namespace {

// An external library may supply the implementation where the plug-in's own finds no context.
constexpr char kExternalLibrary[] = "RMGraphics-impl.dll";
constexpr char kExternalEntryPoint[] = "GetGraphicsImpl";

// The process-wide implementation of the plug-in, made on first request and never destroyed. One
// that exists stays, even while no context is current.
GraphicsImpl* OwnImplementation() {
  static std::mutex mutex;
  static Graphics_Base* base = nullptr;
  const std::lock_guard lock(mutex);
  if (base == nullptr) {
    auto candidate = std::make_unique<Graphics_Base>();
    if (!candidate->Initialize()) return nullptr;
    base = candidate.release();
  }
  return base->IsAvailable() ? base : nullptr;
}

// The library is freed as soon as it has answered, so its implementation is of use only where the
// host keeps the library loaded.
GraphicsImpl* ExternalImplementation() {
  using EntryPoint = int32_t(GraphicsImpl**);
  const auto library = platform::DynamicLibrary::Open(kExternalLibrary);
  auto* entry_point = reinterpret_cast<EntryPoint*>(library.Symbol(kExternalEntryPoint));
  GraphicsImpl* implementation = nullptr;
  if (entry_point != nullptr) entry_point(&implementation);
  return implementation;
}

}  // namespace

int32_t PXGraphics_OpenGL::Initialize() {
  implementation_ = OwnImplementation();
  if (implementation_ == nullptr) implementation_ = ExternalImplementation();
  return implementation_ == nullptr ? 1 : 0;
}

int32_t PXGraphics_OpenGL::SetTarget(PXImage* image) {
  if (implementation_ == nullptr) return 1;
  implementation_->SetTarget(image == nullptr ? nullptr : image->texture());
  return 0;
}

int32_t PXGraphics_OpenGL::Render(const PXGraphicsContext& context) {
  if (context.api != kApiOpenGl || implementation_ == nullptr) return 1;
  DrawDescription draw;
  draw.mode = context.draw_mode;
  textures_.clear();
  for (const auto& image : context.images) {
    if (image != nullptr) textures_.push_back(image->texture());
  }
  draw.textures = textures_;
  draw.program = context.program == nullptr ? nullptr : context.program->shader();
  draw.uniforms = context.uniforms;
  draw.mesh_attribute = context.mesh_attribute;
  draw.mesh_float_count = context.mesh_vertices.size();
  draw.mesh_floats = context.mesh_vertices.data();
  draw.only_in_regions = context.only_in_regions;
  draw.regions = context.regions;
  return implementation_->Render(draw) ? 0 : 1;
}

std::shared_ptr<PXGraphics_OpenGL> CreateOpenGlGraphics() {
  auto graphics = MakeForFrame<PXGraphics_OpenGL>();
  return graphics->Initialize() == 0 ? graphics : nullptr;
}

std::shared_ptr<PXGraphics> CreateGraphics(GraphicsKind kind) {
  if (kind == GraphicsKind::kOpenGl) return CreateOpenGlGraphics();
  return std::make_shared<PXGraphicsNull>();
}

void FinishGraphics() { GL::Finish(); }

std::unique_ptr<PXGraphicsContext> CreateGraphicsContext() {
  return std::make_unique<PXGraphicsContext_OpenGL>();
}

}  // namespace krv
