#include "graphics/opengl/impl/graphics_base.h"

#include <glad/gl.h>

#include <utility>

#include "graphics/opengl/impl/Texture.h"
#include "graphics/opengl/impl/gl_state.h"
#include "graphics/opengl/impl/resource_pool.h"
#include "graphics/opengl/impl/shader.h"
#include "platform/current_context.h"

namespace krv {
namespace {

// A vertex buffer for one draw, bound to GL_ARRAY_BUFFER for its lifetime and feeding one
// attribute.
class VertexBuffer {
 public:
  VertexBuffer(const float* floats, uint64_t count, GLuint attribute, GLint floats_per_vertex)
      : attribute_(attribute) {
    glGenBuffers(1, &name_);
    // Without a buffer, GL would read the corners from the host's memory.
    if (name_ == 0) return;
    glBindBuffer(GL_ARRAY_BUFFER, name_);
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(count * sizeof(float)), floats,
                 GL_STATIC_DRAW);
    const auto stride =
        static_cast<GLsizei>(static_cast<size_t>(floats_per_vertex) * sizeof(float));
    glVertexAttribPointer(attribute_, floats_per_vertex, GL_FLOAT, GL_FALSE, stride, nullptr);
    glEnableVertexAttribArray(attribute_);
  }
  VertexBuffer(const VertexBuffer&) = delete;
  VertexBuffer& operator=(const VertexBuffer&) = delete;
  ~VertexBuffer() {
    if (name_ == 0) return;
    glDisableVertexAttribArray(attribute_);
    glDeleteBuffers(1, &name_);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
  }

  bool exists() const { return name_ != 0; }

 private:
  GLuint name_ = 0;
  GLuint attribute_;
};

void UnbindTextures(size_t count) {
  for (size_t unit = count; unit-- > 0;) {
    glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
    glBindTexture(GL_TEXTURE_2D, 0);
  }
}

}  // namespace

bool Graphics_Base::Initialize() {
  if (platform::CurrentGlContext() == nullptr) return false;
  const auto load = [](const char* name) {
    return reinterpret_cast<GLADapiproc>(platform::GlFunction(name));
  };
  return gladLoadGL(load) != 0;
}

bool Graphics_Base::IsAvailable() {
  return platform::CurrentGlContext() != nullptr && glad_glGetString != nullptr &&
         glGetString(GL_VERSION) != nullptr;
}

bool Graphics_Base::SetTarget(GL::Texture* texture) {
  const std::lock_guard lock(mutex_);
  const auto thread = std::this_thread::get_id();
  std::erase_if(targets_, [thread](const ThreadTarget& t) { return t.thread == thread; });
  if (texture != nullptr) targets_.push_back({thread, texture});
  return true;
}

GL::Texture* Graphics_Base::Target() const {
  for (const ThreadTarget& target : targets_) {
    if (target.thread == std::this_thread::get_id()) return target.texture;
  }
  return nullptr;
}

bool Graphics_Base::Render(const DrawDescription& draw) {
  const std::lock_guard lock(mutex_);
  GL::Texture* target = Target();
  if (target == nullptr || draw.program == nullptr) return false;
  const GL::ScopedDrawState state;
  const GL::ScopedSamplers samplers(draw.textures.size());
  auto& pool = GL::ResourcePool::Instance();

  glActiveTexture(GL_TEXTURE0);
  target->Bind();
  bool drawn = pool.BindFramebuffer(target->name()) &&
               glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
  if (drawn) {
    // Effects rely on starting from exactly this colour: green without opacity.
    glClearColor(0.0f, 1.0f, 0.0f, 0.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    glViewport(0, 0, static_cast<GLsizei>(target->width()), static_cast<GLsizei>(target->height()));
    // A program that did not link, which was reported when it was made, draws nothing.
    if (draw.program->linked()) {
      glUseProgram(draw.program->name());
      SetUniforms(draw);
      drawn = DrawByMode(draw);
    }
  }
  UnbindTextures(draw.textures.size());
  pool.UnbindFramebuffer(target->name());
  glBindTexture(GL_TEXTURE_2D, 0);
  glUseProgram(0);
  glBindFramebuffer(GL_FRAMEBUFFER, 0);
  glActiveTexture(GL_TEXTURE0);
  return drawn;
}

bool Graphics_Base::DrawByMode(const DrawDescription& draw) {
  switch (draw.mode) {
    case DrawMode::kQuad:
      return DrawQuad(draw);
    case DrawMode::kMesh:
      return DrawMesh(draw);
    case DrawMode::kNone:
      return DrawNone(draw);
  }
  return true;
}

std::shared_ptr<GL::Shader> Graphics_Base::CreateProgram(std::string& vertex_source,
                                                         std::string& fragment_source) {
  auto shader =
      GL::Shader::Compile(std::exchange(vertex_source, {}), std::exchange(fragment_source, {}), {});
  return shader;
}

std::shared_ptr<GL::Texture> Graphics_Base::CreateTexture(uint32_t existing_name, uint32_t width,
                                                          uint32_t height, uint32_t internal_format,
                                                          uint32_t format, uint32_t type,
                                                          const void* pixels, uint32_t row_length) {
  const GL::TextureShape shape{internal_format, format, type, width, height};
  return existing_name == 0 ? GL::Texture::Create(shape, pixels, row_length)
                            : GL::Texture::Adopt(existing_name, shape, pixels, row_length);
}

bool Graphics_Base::ReadPixels(GL::Texture* texture, void* destination,
                               int32_t destination_stride) {
  if (texture == nullptr || destination == nullptr) return false;
  return texture->ReadBack(destination, destination_stride);
}

bool Graphics_Base::SetUniforms(const DrawDescription& draw) {
  if (draw.program == nullptr) return false;
  for (const UniformValue& uniform : draw.uniforms) draw.program->SetUniform(uniform);
  GLenum unit = GL_TEXTURE0;
  for (const GL::Texture* texture : draw.textures) {
    if (texture == nullptr) continue;
    glActiveTexture(unit++);
    texture->Bind();
  }
  return true;
}

bool Graphics_Base::DrawQuad(const DrawDescription& draw) {
  // The vertex shader's only attribute, the position, is attribute 0.
  constexpr float kCorners[] = {0, 1, 0, 0, 1, 1, 1, 0};
  const VertexBuffer corners(kCorners, std::size(kCorners), 0, 2);
  if (!corners.exists()) return false;
  if (!draw.only_in_regions) {
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    return true;
  }
  GL::ScopedScissor scissor;
  for (const TargetRegion& region : draw.regions) {
    scissor.Cut(region.x, region.y, region.width, region.height);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
  }
  return true;
}

bool Graphics_Base::DrawMesh(const DrawDescription& draw) {
  const int32_t attribute = draw.program->AttributeLocation(draw.mesh_attribute);
  // Fewer floats than a triangle has would make the draw read past the buffer.
  if (attribute < 0 || draw.mesh_float_count < 9) return true;
  const VertexBuffer mesh(draw.mesh_floats, draw.mesh_float_count, static_cast<GLuint>(attribute),
                          3);
  if (!mesh.exists()) return false;
  glDrawArrays(GL_TRIANGLES, 0, 3);  // the first triangle alone, whatever the mesh holds
  return true;
}

bool Graphics_Base::DrawNone(const DrawDescription& /*draw*/) { return true; }

}  // namespace krv
