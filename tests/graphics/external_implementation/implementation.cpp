// A library that supplies an implementation of its own. It draws nothing and counts its calls.
#include "graphics/external_implementation/calls.h"
#include "graphics/opengl/impl/graphics_impl.h"

namespace krv::test {
namespace {

ExternalCalls calls;

class CountingImplementation final : public GraphicsImpl {
 public:
  bool Initialize() override { return true; }
  bool SetTarget(GL::Texture*) override {
    ++calls.set_target;
    return true;
  }
  bool Render(const DrawDescription& draw) override {
    ++calls.render;
    calls.uniforms = draw.uniforms.size();
    calls.mesh_floats = draw.mesh_float_count;
    return draw.mode != DrawMode::kNone;
  }
  bool IsAvailable() override { return true; }
  std::shared_ptr<GL::Shader> CreateProgram(std::string&, std::string&) override { return nullptr; }
  std::shared_ptr<GL::Texture> CreateTexture(uint32_t, uint32_t, uint32_t, uint32_t, uint32_t,
                                             uint32_t, const void*, uint32_t) override {
    return nullptr;
  }
  bool ReadPixels(GL::Texture*, void*, int32_t) override { return false; }
  bool SetUniforms(const DrawDescription&) override { return true; }
  bool DrawQuad(const DrawDescription&) override { return true; }
  bool DrawMesh(const DrawDescription&) override { return true; }
  bool DrawNone(const DrawDescription&) override { return true; }
};

CountingImplementation implementation;

}  // namespace
}  // namespace krv::test

extern "C" {

__attribute__((visibility("default"))) int32_t GetGraphicsImpl(krv::GraphicsImpl** result) {
  *result = &krv::test::implementation;
  return 0;
}

__attribute__((visibility("default"))) krv::test::ExternalCalls* GetExternalCalls() {
  return &krv::test::calls;
}
}
