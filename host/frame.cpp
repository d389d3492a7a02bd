#include "frame.h"

#include <glad/gl.h>

#include <algorithm>
#include <cstring>

namespace krv::host {
namespace {

GLenum GlType(int32_t pixel_type) {
  switch (pixel_type) {
    case kPixel16:
      return GL_UNSIGNED_SHORT;
    case kPixelFloat:
      return GL_FLOAT;
    default:
      return GL_UNSIGNED_BYTE;
  }
}

GLint GlInternalFormat(int32_t pixel_type) {
  switch (pixel_type) {
    case kPixel16:
      return GL_RGBA16;
    case kPixelFloat:
      return GL_RGBA32F;
    default:
      return GL_RGBA8;
  }
}

// Binds a texture for rows without padding, and puts the state of the caller back afterwards: the
// plug-in may ask for pixels in the middle of its own drawing.
class TextureBinding {
 public:
  explicit TextureBinding(GLuint texture) {
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &texture_);
    for (Setting& setting : settings_) {
      glGetIntegerv(setting.name, &setting.value);
      glPixelStorei(setting.name, setting.wanted);
    }
    glBindTexture(GL_TEXTURE_2D, texture);
  }

  ~TextureBinding() {
    glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(texture_));
    for (const Setting& setting : settings_) glPixelStorei(setting.name, setting.value);
  }

  TextureBinding(const TextureBinding&) = delete;
  TextureBinding& operator=(const TextureBinding&) = delete;

 private:
  struct Setting {
    GLenum name;
    GLint wanted;
    GLint value = 0;
  };
  GLint texture_ = 0;
  Setting settings_[10] = {{GL_PACK_ALIGNMENT, 1},     {GL_PACK_ROW_LENGTH, 0},
                           {GL_PACK_SKIP_ROWS, 0},     {GL_PACK_SKIP_PIXELS, 0},
                           {GL_PACK_SWAP_BYTES, 0},    {GL_UNPACK_ALIGNMENT, 1},
                           {GL_UNPACK_ROW_LENGTH, 0},  {GL_UNPACK_SKIP_ROWS, 0},
                           {GL_UNPACK_SKIP_PIXELS, 0}, {GL_UNPACK_SWAP_BYTES, 0}};
};

void DrainGlErrors() {
  while (glGetError() != GL_NO_ERROR) {
  }
}

FrameDescription MakeDescription(int32_t width, int32_t height, int32_t pixel_type, int32_t form,
                                 int32_t stride) {
  return {pixel_type, form, width, height, std::max(stride, width * BytesPerPixel(pixel_type))};
}

int32_t RowBytes(const FrameDescription& description) {
  return description.width * BytesPerPixel(description.pixel_type);
}

}  // namespace

int32_t BytesPerPixel(int32_t pixel_type) {
  switch (pixel_type) {
    case kPixel8:
      return 4;
    case kPixel16:
      return 8;
    case kPixelFloat:
      return 16;
    default:
      return 0;
  }
}

void CopyRows(const void* source, int32_t source_stride, void* destination,
              int32_t destination_stride, int32_t row_bytes, int32_t rows) {
  const auto* from = static_cast<const uint8_t*>(source);
  auto* to = static_cast<uint8_t*>(destination);
  for (int32_t row = 0; row < rows; ++row, from += source_stride, to += destination_stride) {
    std::memcpy(to, from, static_cast<size_t>(row_bytes));
  }
}

MemoryFrame::MemoryFrame(int32_t width, int32_t height, int32_t pixel_type, int32_t stride)
    : description_(MakeDescription(width, height, pixel_type, kFrameInMemory, stride)),
      own_(static_cast<size_t>(description_.stride) * static_cast<size_t>(height)),
      pixels_(own_.data()) {}

MemoryFrame::MemoryFrame(const FrameDescription& description, void* pixels)
    : description_(description), pixels_(pixels) {}

int32_t MemoryFrame::Describe(FrameDescription* out) {
  *out = description_;
  return kOk;
}

void* MemoryFrame::GetPixels() { return pixels_; }

int32_t MemoryFrame::ReadPixels(void* destination, int32_t destination_stride) {
  if (pixels_ == nullptr || destination_stride < RowBytes(description_)) return kFailed;
  CopyRows(pixels_, description_.stride, destination, destination_stride, RowBytes(description_),
           description_.height);
  return kOk;
}

std::unique_ptr<TextureFrame> TextureFrame::Create(int32_t width, int32_t height,
                                                   int32_t pixel_type, std::string* error) {
  if (width <= 0 || height <= 0 || BytesPerPixel(pixel_type) == 0) {
    *error = "no texture of " + std::to_string(width) + " x " + std::to_string(height) +
             " pixels of type " + std::to_string(pixel_type);
    return nullptr;
  }
  GLint largest = 0;
  glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
  if (width > largest || height > largest) {
    *error = "no texture of " + std::to_string(width) + " x " + std::to_string(height) +
             " pixels: OpenGL's largest here is " + std::to_string(largest) + " a side";
    return nullptr;
  }
  DrainGlErrors();
  GLuint texture = 0;
  glGenTextures(1, &texture);
  {
    const TextureBinding binding(texture);
    // Sampled as the plug-in's own textures are, so that both forms give the same picture to the
    // bit: drivers filter with different precision for different ways of wrapping.
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_MIRRORED_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_MIRRORED_REPEAT);
    glTexImage2D(GL_TEXTURE_2D, 0, GlInternalFormat(pixel_type), width, height, 0, GL_BGRA,
                 GlType(pixel_type), nullptr);
  }
  if (const GLenum code = glGetError(); code != GL_NO_ERROR) {
    glDeleteTextures(1, &texture);
    *error = "OpenGL refuses a texture of " + std::to_string(width) + " x " +
             std::to_string(height) + " pixels (error " + std::to_string(code) + ")";
    return nullptr;
  }
  return std::unique_ptr<TextureFrame>(
      new TextureFrame(MakeDescription(width, height, pixel_type, kFrameOnGpu, 0), texture));
}

TextureFrame::~TextureFrame() { glDeleteTextures(1, &texture_); }

bool TextureFrame::Upload(const void* pixels, int32_t stride) {
  if (stride < description_.stride) return false;
  std::vector<uint8_t> rows;
  if (stride != description_.stride) {
    rows.resize(static_cast<size_t>(description_.stride) *
                static_cast<size_t>(description_.height));
    CopyRows(pixels, stride, rows.data(), description_.stride, description_.stride,
             description_.height);
    pixels = rows.data();
  }
  DrainGlErrors();
  const TextureBinding binding(texture_);
  glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, description_.width, description_.height, GL_BGRA,
                  GlType(description_.pixel_type), pixels);
  return glGetError() == GL_NO_ERROR;
}

int32_t TextureFrame::Describe(FrameDescription* out) {
  *out = description_;
  return kOk;
}

void* TextureFrame::GetPixels() { return nullptr; }

int32_t TextureFrame::ReadPixels(void* destination, int32_t destination_stride) {
  if (destination_stride < description_.stride) return kFailed;
  std::vector<uint8_t> rows;
  void* target = destination;
  if (destination_stride != description_.stride) {
    rows.resize(static_cast<size_t>(description_.stride) *
                static_cast<size_t>(description_.height));
    target = rows.data();
  }
  DrainGlErrors();
  {
    const TextureBinding binding(texture_);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_BGRA, GlType(description_.pixel_type), target);
  }
  if (glGetError() != GL_NO_ERROR) return kFailed;
  if (target != destination) {
    CopyRows(target, description_.stride, destination, destination_stride, description_.stride,
             description_.height);
  }
  return kOk;
}

}  // namespace krv::host
