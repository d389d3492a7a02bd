#include "graphics/opengl/impl/Texture.h"

#include <glad/gl.h>

#include <cstring>
#include <memory_resource>

#include "graphics/opengl/impl/gl_check.h"
#include "graphics/opengl/impl/gl_state.h"
#include "graphics/opengl/impl/resource_pool.h"
#include "memory/frame_memory.h"

namespace krv::GL {
namespace {

bool FitsDriver(const TextureShape& shape) {
  GLint largest = 0;
  glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
  const auto limit = static_cast<uint32_t>(largest);
  return shape.width > 0 && shape.height > 0 && shape.width <= limit && shape.height <= limit;
}

size_t BytesPerPixel(uint32_t type) {
  switch (type) {
    case GL_UNSIGNED_SHORT:
      return 8;
    case GL_FLOAT:
      return 16;
    default:
      return 4;
  }
}

void CopyRows(void* destination, int32_t stride, const void* source, size_t row_bytes,
              uint32_t rows) {
  if (stride == static_cast<int64_t>(row_bytes)) {
    std::memcpy(destination, source, row_bytes * rows);
    return;
  }
  auto* to = static_cast<unsigned char*>(destination);
  const auto* from = static_cast<const unsigned char*>(source);
  for (uint32_t row = 0; row < rows; ++row, to += stride, from += row_bytes) {
    std::memcpy(to, from, row_bytes);
  }
}

// A pixel-pack buffer for one read-back, bound for its lifetime.
class PackBuffer {
 public:
  explicit PackBuffer(size_t bytes) {
    glGenBuffers(1, &name_);
    CheckGl();
    // Without a buffer, GL would write to the address that it is told as an offset: 0.
    if (name_ == 0) return;
    glBindBuffer(GL_PIXEL_PACK_BUFFER, name_);
    CheckGl();
    glBufferData(GL_PIXEL_PACK_BUFFER, static_cast<GLsizeiptr>(bytes), nullptr, GL_STREAM_READ);
    CheckGl();
  }
  PackBuffer(const PackBuffer&) = delete;
  PackBuffer& operator=(const PackBuffer&) = delete;
  ~PackBuffer() {
    if (name_ == 0) return;
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    CheckGl();
    glDeleteBuffers(1, &name_);
    CheckGl();
  }

  bool exists() const { return name_ != 0; }

  const void* Map() const {
    const void* mapped = glMapBuffer(GL_PIXEL_PACK_BUFFER, GL_READ_ONLY);
    CheckGl();
    return mapped;
  }

  void Unmap() const {
    glUnmapBuffer(GL_PIXEL_PACK_BUFFER);
    CheckGl();
  }

 private:
  GLuint name_ = 0;
};

}  // namespace

void Texture::Record(uint32_t name, const TextureShape& shape) {
  name_ = name;
  target_ = GL_TEXTURE_2D;
  format_ = shape.format;
  type_ = shape.type;
  width_ = shape.width;
  height_ = shape.height;
}

size_t Texture::RowBytes() const { return width_ * BytesPerPixel(type_); }

void Texture::Bind() const {
  glBindTexture(target_, name_);
  CheckGl();
}

void Texture::Release() {
  ResourcePool::Instance().Release(name_, owner_);
  name_ = 0;
}

bool Texture::HasShape(const TextureShape& shape) const {
  return width_ == shape.width && height_ == shape.height && format_ == shape.format &&
         type_ == shape.type;
}

bool Texture::IsOfCurrentContext() const {
  return owner_ == ResourcePool::Instance().CurrentOwner();
}

// Every frame makes a handle for each texture of the host's.
std::shared_ptr<Texture> Texture::MakeHandle() {
  std::pmr::polymorphic_allocator<Texture> memory(&FrameMemory());
  const auto release = [memory](Texture* texture) mutable {
    texture->Release();
    memory.delete_object(texture);
  };
  return {memory.new_object<Texture>(Key()), release, memory};
}

std::shared_ptr<Texture> Texture::Create(const TextureShape& shape, const void* pixels,
                                         uint32_t row_length) {
  if (!FitsDriver(shape)) return nullptr;
  auto& pool = ResourcePool::Instance();
  const uint32_t name =
      pool.Acquire(shape.internal_format, shape.format, shape.width, shape.height);
  if (name == 0) return nullptr;
  auto texture = MakeHandle();
  texture->Record(name, shape);
  texture->owner_ = pool.CurrentOwner();

  glActiveTexture(GL_TEXTURE0);
  CheckGl();
  texture->Bind();
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
  CheckGl();
  if (pixels != nullptr) {
    glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
    CheckGl();
    const ScopedPixelStore store(ScopedPixelStore::Direction::kUpload,
                                 static_cast<GLint>(row_length));
    glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(shape.internal_format),
                 static_cast<GLsizei>(shape.width), static_cast<GLsizei>(shape.height), 0,
                 shape.format, shape.type, pixels);
    CheckGl();
  }
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_MIRRORED_REPEAT);
  CheckGl();
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_MIRRORED_REPEAT);
  CheckGl();
  glBindTexture(GL_TEXTURE_2D, 0);
  CheckGl();
  return texture;
}

std::shared_ptr<Texture> Texture::Adopt(uint32_t name, const TextureShape& shape,
                                        const void* pixels, uint32_t row_length) {
  auto& pool = ResourcePool::Instance();
  pool.Adopt(name, shape.internal_format, shape.format, shape.width, shape.height);
  auto texture = MakeHandle();
  texture->Record(name, shape);
  texture->owner_ = pool.CurrentOwner();
  if (pixels == nullptr) return texture;

  glActiveTexture(GL_TEXTURE0);
  CheckGl();
  texture->Bind();
  glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
  CheckGl();
  const ScopedPixelStore store(ScopedPixelStore::Direction::kUpload,
                               static_cast<GLint>(row_length));
  glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, static_cast<GLsizei>(shape.width),
                  static_cast<GLsizei>(shape.height), shape.format, shape.type, pixels);
  glGetError();  // the host's texture may not take our format; that is its affair
  glBindTexture(GL_TEXTURE_2D, 0);
  CheckGl();
  return texture;
}

void Texture::Upload(const void* pixels, uint32_t row_length) const {
  glActiveTexture(GL_TEXTURE0);
  CheckGl();
  Bind();
  glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
  CheckGl();
  const ScopedPixelStore store(ScopedPixelStore::Direction::kUpload,
                               static_cast<GLint>(row_length));
  glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, static_cast<GLsizei>(width_),
                  static_cast<GLsizei>(height_), format_, type_, pixels);
  CheckGl();
  glBindTexture(GL_TEXTURE_2D, 0);
  CheckGl();
}

bool Texture::BindToRead() const {
  glActiveTexture(GL_TEXTURE0);
  CheckGl();
  Bind();
  const bool complete = ResourcePool::Instance().BindFramebuffer(name_) &&
                        glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
  CheckGl();
  return complete;
}

void Texture::UnbindAfterReading() const {
  ResourcePool::Instance().UnbindFramebuffer(name_);
  glBindTexture(GL_TEXTURE_2D, 0);
  CheckGl();
}

bool Texture::ReadBack(void* destination, int32_t stride) const {
  bool read = BindToRead();
  if (read) {
    const size_t row_bytes = RowBytes();
    const PackBuffer buffer(row_bytes * height_);
    read = buffer.exists();
    if (read) {
      const ScopedPixelStore store(ScopedPixelStore::Direction::kReadBack, 0);
      glReadPixels(0, 0, static_cast<GLsizei>(width_), static_cast<GLsizei>(height_), format_,
                   type_, nullptr);
      read = CheckGl();
    }
    const void* mapped = read ? buffer.Map() : nullptr;
    read = mapped != nullptr;
    if (read) {
      CopyRows(destination, stride, mapped, row_bytes, height_);
      buffer.Unmap();
    }
  }
  UnbindAfterReading();
  return read;
}

bool Texture::ReadRows(uint32_t first, uint32_t count, void* destination) const {
  bool read = BindToRead();
  if (read) {
    // With a buffer of the host's bound, GL would take the address for a place in that.
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    const ScopedPixelStore store(ScopedPixelStore::Direction::kReadBack, 0);
    glReadPixels(0, static_cast<GLint>(first), static_cast<GLsizei>(width_),
                 static_cast<GLsizei>(count), format_, type_, destination);
    read = CheckGl();
  }
  UnbindAfterReading();
  return read;
}

}  // namespace krv::GL
