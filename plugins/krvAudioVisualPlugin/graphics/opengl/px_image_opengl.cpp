#include "graphics/opengl/px_image_opengl.h"

#include <glad/gl.h>

#include <cstring>
#include <optional>

#include "graphics/opengl/impl/gl_check.h"
#include "graphics/opengl/px_graphics_opengl.h"
#include "memory/frame_memory.h"

namespace krv {
namespace {

struct GlPixelType {
  uint32_t type;
  uint32_t component_bytes;
  uint32_t internal_format;
};

std::optional<GlPixelType> PixelTypeOf(DataType type) {
  switch (type) {
    case DataType::kUint8:
      return GlPixelType{GL_UNSIGNED_BYTE, 1, GL_RGBA8};
    case DataType::kInt8:
      return GlPixelType{GL_BYTE, 1, GL_RGBA8};
    case DataType::kUint16:
      return GlPixelType{GL_UNSIGNED_SHORT, 2, GL_RGBA8};
    case DataType::kFloat:
      return GlPixelType{GL_FLOAT, 4, GL_RGBA32F};
    case DataType::kInt16:
      break;
  }
  return std::nullopt;
}

std::optional<uint32_t> FormatOf(PixelLayout layout) {
  switch (layout) {
    case PixelLayout::kRgba:
      return GL_RGBA;
    case PixelLayout::kBgra:
      return GL_BGRA;
  }
  return std::nullopt;
}

// GL counts the distance between rows in whole pixels; rows that do not fit that are packed
// tightly.
void PackRows(const void* pixels, uint32_t height, uint32_t stride, uint32_t row_bytes,
              std::vector<std::byte>& packed) {
  packed.resize(static_cast<size_t>(height) * row_bytes);
  const auto* source = static_cast<const std::byte*>(pixels);
  for (uint32_t row = 0; row < height; ++row) {
    std::memcpy(packed.data() + static_cast<size_t>(row) * row_bytes,
                source + static_cast<size_t>(row) * stride, row_bytes);
  }
}

}  // namespace

PXImage_OpenGL::PXImage_OpenGL() : graphics_(CreateOpenGlGraphics()) {}

int32_t PXImage_OpenGL::Create(uint32_t existing, uint32_t width, uint32_t height,
                               PixelLayout layout, DataType type, uint32_t stride,
                               const void* pixels) {
  if (graphics_ == nullptr) return 1;
  const auto pixel_type = PixelTypeOf(type);
  const auto format = FormatOf(layout);
  if (!pixel_type || !format || width == 0 || height == 0) return 1;
  const uint32_t bytes_per_pixel = pixel_type->component_bytes * 4;
  if (pixels != nullptr && stride < uint64_t{width} * bytes_per_pixel) return 1;

  SetKindFlag(1);
  SetWidth(width);
  SetHeight(height);
  SetStride(stride);
  SetDataType(type);
  SetPixelLayout(layout);
  pixel_buffer_.clear();

  uint32_t row_length = stride / bytes_per_pixel;
  if (pixels != nullptr && stride % bytes_per_pixel != 0) {
    PackRows(pixels, height, stride, width * bytes_per_pixel, packed_rows_);
    pixels = packed_rows_.data();
    row_length = width;
  }
  if (existing == 0 &&
      CanKeepTexture({pixel_type->internal_format, *format, pixel_type->type, width, height})) {
    if (pixels != nullptr) texture_->Upload(pixels, row_length);
    return 0;
  }
  adopted_ = existing != 0;
  texture_ = graphics_->implementation()->CreateTexture(existing, width, height,
                                                        pixel_type->internal_format, *format,
                                                        pixel_type->type, pixels, row_length);
  return texture_ == nullptr ? 1 : 0;
}

bool PXImage_OpenGL::CanKeepTexture(const GL::TextureShape& shape) const {
  return texture_ != nullptr && !adopted_ && texture_->HasShape(shape) &&
         texture_->IsOfCurrentContext();
}

int32_t PXImage_OpenGL::SetWidth(uint32_t width) {
  width_ = width;
  return 0;
}

int32_t PXImage_OpenGL::SetHeight(uint32_t height) {
  height_ = height;
  return 0;
}

int32_t PXImage_OpenGL::SetStride(uint32_t stride) {
  stride_ = stride;
  return 0;
}

int32_t PXImage_OpenGL::SetKindFlag(uint32_t flag) {
  kind_flag_ = flag;
  return 0;
}

int32_t PXImage_OpenGL::SetPixelLayout(PixelLayout layout) {
  layout_ = layout;
  return 0;
}

int32_t PXImage_OpenGL::SetDataType(DataType type) {
  data_type_ = type;
  return 0;
}

bool PXImage_OpenGL::ReadPixels(void* destination, int32_t stride) const {
  return graphics_ != nullptr && texture_ != nullptr &&
         graphics_->implementation()->ReadPixels(texture_.get(), destination, stride);
}

bool PXImage_OpenGL::ReadRows(RowSpan rows, uint8_t* picture) const {
  if (graphics_ == nullptr || texture_ == nullptr) return false;
  const size_t row_bytes = texture_->RowBytes();
  // An external implementation reads nothing but whole textures.
  if (!GL::IsLoaded()) return ReadPixels(picture, static_cast<int32_t>(row_bytes));
  return texture_->ReadRows(rows.first, rows.count, picture + rows.first * row_bytes);
}

std::byte* PXImage_OpenGL::PixelBuffer() {
  pixel_buffer_.resize(static_cast<size_t>(height_) * stride_);
  return pixel_buffer_.data();
}

int PXImage_OpenGL::MatrixType() const {
  const int channels = layout_ == PixelLayout::kRgba || layout_ == PixelLayout::kBgra ? 4 : 3;
  switch (data_type_) {
    case DataType::kInt8:
      return CV_MAKETYPE(CV_8S, channels);
    case DataType::kUint16:
    case DataType::kFloat:
      return CV_MAKETYPE(CV_16U, channels);
    case DataType::kInt16:
      return CV_MAKETYPE(CV_16S, channels);
    case DataType::kUint8:
      return CV_MAKETYPE(CV_8U, channels);
  }
  return CV_8UC4;
}

cv::Mat& PXImage_OpenGL::Download(cv::Mat& matrix) {
  if (texture_ == nullptr || graphics_ == nullptr) return matrix;
  // An image made without pixels may have a stride that its own rows do not fit into.
  if (stride_ < texture_->RowBytes() || height_ < texture_->height()) return matrix;
  std::byte* buffer = PixelBuffer();
  if (!ReadPixels(buffer, static_cast<int32_t>(stride_))) return matrix;
  matrix =
      cv::Mat(static_cast<int>(height_), static_cast<int>(width_), MatrixType(), buffer, stride_);
  return matrix;
}

std::shared_ptr<PXImage> CreateImage(uint32_t width, uint32_t height, PixelLayout layout,
                                     DataType type, uint32_t stride, const void* pixels) {
  auto image = MakeForFrame<PXImage_OpenGL>();
  return image->Create(0, width, height, layout, type, stride, pixels) == 0 ? image : nullptr;
}

std::shared_ptr<PXImage> CreateImage(const cv::Mat& matrix, PixelLayout layout) {
  if (matrix.empty()) return nullptr;
  return CreateImage(static_cast<uint32_t>(matrix.cols), static_cast<uint32_t>(matrix.rows), layout,
                     DataType::kUint8, static_cast<uint32_t>(matrix.step[0]), matrix.data);
}

ImageSize SizeOf(const PXImage& image) {
  return {image.texture()->width(), image.texture()->height()};
}

void ReuseImage(std::shared_ptr<PXImage>& image, const cv::Mat& matrix, PixelLayout layout) {
  if (image == nullptr) {
    image = CreateImage(matrix, layout);
  } else if (matrix.empty() ||
             image->Create(0, static_cast<uint32_t>(matrix.cols),
                           static_cast<uint32_t>(matrix.rows), layout, DataType::kUint8,
                           static_cast<uint32_t>(matrix.step[0]), matrix.data) != 0) {
    image.reset();
  }
}

bool HoldsFloats(const PXImage& image) {
  if (image.texture() == nullptr) return false;
  constexpr size_t kFloatPixelBytes = 4 * sizeof(float);
  return image.texture()->RowBytes() == image.texture()->width() * kFloatPixelBytes;
}

bool ReadTexture(const PXImage& image, void* destination, int32_t stride) {
  const auto* opengl = dynamic_cast<const PXImage_OpenGL*>(&image);
  return opengl != nullptr && opengl->ReadPixels(destination, stride);
}

bool ReadTextureRows(const PXImage& image, RowSpan rows, uint8_t* picture) {
  const auto* opengl = dynamic_cast<const PXImage_OpenGL*>(&image);
  return opengl != nullptr && opengl->ReadRows(rows, picture);
}

}  // namespace krv
