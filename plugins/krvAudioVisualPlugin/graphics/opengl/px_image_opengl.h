// An image backed by a GL texture of the pool.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "graphics/opengl/impl/Texture.h"
#include "graphics/px_image.h"

namespace krv {

class PXGraphics_OpenGL;

class PXImage_OpenGL : public PXImage {
 public:
  PXImage_OpenGL();  // makes a device of its own; Create fails when there is none

  GL::Texture* texture() const override { return texture_.get(); }
  cv::Mat& Download(cv::Mat& matrix) override;
  int32_t Create(uint32_t existing, uint32_t width, uint32_t height, PixelLayout layout,
                 DataType type, uint32_t stride, const void* pixels) override;
  int32_t SetWidth(uint32_t width) override;
  int32_t SetHeight(uint32_t height) override;
  int32_t SetStride(uint32_t stride) override;
  int32_t SetKindFlag(uint32_t flag) override;
  int32_t SetPixelLayout(PixelLayout layout) override;
  int32_t SetDataType(DataType type) override;

  // Reads the texture into `destination`, rows `stride` bytes apart. False on failure.
  bool ReadPixels(void* destination, int32_t stride) const;
  // See ReadTextureRows.
  bool ReadRows(RowSpan rows, uint8_t* picture) const;

 protected:
  // The buffer for read-back, made on first use: height x stride bytes.
  std::byte* PixelBuffer();
  void DropTexture() { texture_.reset(); }
  // The matrix type for the image's layout and data type.
  int MatrixType() const;

  uint32_t width_ = 0;   // pixels
  uint32_t height_ = 0;  // pixels
  uint32_t stride_ = 0;  // bytes per row of the pixel buffer
  PixelLayout layout_ = PixelLayout::kRgba;
  DataType data_type_ = DataType::kUint8;
  uint32_t kind_flag_ = 0;

 private:
  // Whether the texture at hand can take other pixels of that shape.
  bool CanKeepTexture(const GL::TextureShape& shape) const;

  std::shared_ptr<PXGraphics_OpenGL> graphics_;
  std::shared_ptr<GL::Texture> texture_;
  bool adopted_ = false;  // the texture is someone else's
  std::vector<std::byte> pixel_buffer_;
  std::vector<std::byte> packed_rows_;  // scratch memory of Create
};

}  // namespace krv
