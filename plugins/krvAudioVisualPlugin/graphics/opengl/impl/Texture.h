// GL::Texture: a texture of the pool, or one of the host's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace krv::GL {

// What makes two textures interchangeable, and how pixels travel to and from them. All GL codes.
struct TextureShape {
  uint32_t internal_format;
  uint32_t format;
  uint32_t type;
  uint32_t width;   // texels
  uint32_t height;  // texels
};

// Held by a shared handle whose deleter gives the name back to the pool, on any thread. Everything
// else needs the texture's GL context current.
//
// Creation and read-back leave GL_TEXTURE_2D of unit 0 unbound and unit 0 active. Textures are
// sampled linearly and mirrored beyond their edges.
class Texture {
 public:
  // A texture through the pool, with `pixels` when not null, rows `row_length` pixels apart. Null
  // when GL gives none, or the size is above what the driver takes.
  static std::shared_ptr<Texture> Create(const TextureShape& shape, const void* pixels,
                                         uint32_t row_length);

  // A texture that belongs to someone else and outlives the handle; `pixels`, when not null, are
  // uploaded over the whole of it.
  static std::shared_ptr<Texture> Adopt(uint32_t name, const TextureShape& shape,
                                        const void* pixels, uint32_t row_length);

  // Made by the two functions above alone.
  class Key {
    Key() = default;
    friend class Texture;
  };
  explicit Texture(Key) {}
  Texture(const Texture&) = delete;
  Texture& operator=(const Texture&) = delete;

  uint32_t name() const { return name_; }
  uint32_t width() const { return width_; }
  uint32_t height() const { return height_; }

  // Replaces the whole picture by `pixels`, rows `row_length` pixels apart, in its own format and
  // type. For a texture of the pool.
  void Upload(const void* pixels, uint32_t row_length) const;

  // Whether it is of that size, format and type.
  bool HasShape(const TextureShape& shape) const;

  // Whether it lives in the context that is current.
  bool IsOfCurrentContext() const;

  // Bytes of one row of the read-back, without padding.
  size_t RowBytes() const;

  // Binds it to its target on the active unit.
  void Bind() const;

  // Copies the texture into `destination`, rows `stride` bytes apart, in its own format and type.
  // False when it cannot be read; the destination is then untouched.
  bool ReadBack(void* destination, int32_t stride) const;

  // Copies `count` rows from row `first` on, which the texture has, into `destination`, without
  // padding, in its own format and type. Reads without a buffer between, as nothing else is done
  // meanwhile. False when they cannot be read.
  bool ReadRows(uint32_t first, uint32_t count, void* destination) const;

 private:
  static std::shared_ptr<Texture> MakeHandle();
  void Record(uint32_t name, const TextureShape& shape);
  void Release();
  bool BindToRead() const;
  void UnbindAfterReading() const;

  uint32_t name_ = 0;
  uint32_t target_ = 0;
  uint32_t format_ = 0;
  uint32_t type_ = 0;
  uint32_t width_ = 0;
  uint32_t height_ = 0;
  uint64_t owner_ = 0;  // the context it lives in, as the pool counts contexts
};

}  // namespace krv::GL
