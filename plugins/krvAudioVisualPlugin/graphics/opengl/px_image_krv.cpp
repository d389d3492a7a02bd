#include "graphics/opengl/px_image_krv.h"

#include <optional>
#include <utility>

#include "memory/frame_memory.h"

namespace krv {
namespace {

std::optional<DataType> DataTypeOf(int32_t pixel_type) {
  switch (pixel_type) {
    case kPixel8:
      return DataType::kUint8;
    case kPixel16:
      return DataType::kUint16;
    case kPixelFloat:
      return DataType::kFloat;
    default:
      return std::nullopt;
  }
}

}  // namespace

bool PXImage_KRV::Attach(std::shared_ptr<EffectImage> frame, const void* pixels, PixelLayout layout,
                         std::shared_ptr<void> keep_alive) {
  frame_ = std::move(frame);
  keep_alive_ = std::move(keep_alive);
  awaits_upload_ = false;
  uint32_t texture_name = 0;
  if (frame_->on_gpu() && (texture_name = frame_->TextureName()) == 0) return false;
  return CreateFromFrame(texture_name, pixels, layout);
}

bool PXImage_KRV::CreateFromFrame(uint32_t texture_name, const void* pixels, PixelLayout layout) {
  const FrameDescription& description = frame_->description();
  const auto type = DataTypeOf(description.pixel_type);
  return type && Create(texture_name, static_cast<uint32_t>(description.width),
                        static_cast<uint32_t>(description.height), layout, *type,
                        static_cast<uint32_t>(description.stride), pixels) == 0;
}

bool PXImage_KRV::AttachWithoutTexture(std::shared_ptr<EffectImage> frame) {
  const FrameDescription& description = frame->description();
  const auto type = DataTypeOf(description.pixel_type);
  if (!type) return false;
  if (*type != data_type_) DropTexture();
  SetWidth(static_cast<uint32_t>(description.width));
  SetHeight(static_cast<uint32_t>(description.height));
  SetStride(static_cast<uint32_t>(description.stride));
  SetDataType(*type);
  SetPixelLayout(PixelLayout::kBgra);
  frame_ = std::move(frame);
  awaits_upload_ = true;
  return true;
}

bool PXImage_KRV::Upload() {
  if (awaits_upload_) awaits_upload_ = !CreateFromFrame(0, frame_->pixels(), PixelLayout::kBgra);
  return !awaits_upload_;
}

cv::Mat& PXImage_KRV::Download(cv::Mat& matrix) {
  if (frame_ == nullptr) return PXImage_OpenGL::Download(matrix);
  // A float frame holds its own type here; only textures are read under the 16-bit one.
  const int type = data_type_ == DataType::kFloat ? CV_32FC4 : MatrixType();
  // The rows of a matrix are whole channels apart; those of a host's frame need not be.
  const auto stride = stride_ - stride_ % static_cast<uint32_t>(CV_ELEM_SIZE1(type));
  std::byte* buffer = PixelBuffer();
  if (!frame_->ReadPixels(buffer, static_cast<int32_t>(stride))) return matrix;
  matrix = cv::Mat(static_cast<int>(height_), static_cast<int>(width_), type, buffer, stride);
  return matrix;
}

std::shared_ptr<PXImage> CreateImageFromFrame(std::shared_ptr<EffectImage> frame,
                                              const void* pixels, PixelLayout layout) {
  if (frame == nullptr) return nullptr;
  auto image = MakeForFrame<PXImage_KRV>();
  return image->Attach(std::move(frame), pixels, layout) ? image : nullptr;
}

void ReuseImageFromFrame(std::shared_ptr<PXImage>& image, std::shared_ptr<EffectImage> frame,
                         const void* pixels) {
  auto* reused = dynamic_cast<PXImage_KRV*>(image.get());
  if (reused == nullptr) {
    image = CreateImageFromFrame(std::move(frame), pixels);
  } else if (!reused->Attach(std::move(frame), pixels)) {
    image.reset();
  }
}

void ReuseImageOverFrame(std::shared_ptr<PXImage>& image, std::shared_ptr<EffectImage> frame) {
  if (image == nullptr) image = MakeForFrame<PXImage_KRV>();
  auto* over = dynamic_cast<PXImage_KRV*>(image.get());
  if (over == nullptr || !over->AttachWithoutTexture(std::move(frame))) image.reset();
}

bool UploadFrame(PXImage& image) {
  auto* over = dynamic_cast<PXImage_KRV*>(&image);
  return over == nullptr ? image.texture() != nullptr : over->Upload();
}

}  // namespace krv
