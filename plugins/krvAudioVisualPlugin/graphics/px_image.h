// Pictures that shaders read and draws write.
#pragma once

#include <cstdint>
#include <memory>
#include <opencv2/core.hpp>

namespace krv {

class EffectImage;

namespace GL {
class Texture;
}

// The widest texture, in pixels, that every GPU we run on takes.
inline constexpr int kWidestTexture = 16384;

// Order of the four channels of a pixel in memory.
enum class PixelLayout : uint32_t { kRgba = 2, kBgra = 3 };

// Type of one channel in memory.
enum class DataType : uint32_t { kUint8 = 0, kInt8 = 1, kUint16 = 2, kInt16 = 3, kFloat = 6 };

// All operations but the setters: on the thread whose GL context is current.
class PXImage {
 public:
  // The texture that backs the image; null before Create. Owned by the image.
  virtual GL::Texture* texture() const = 0;
  // Reads the picture back. `matrix` becomes a header (height rows, width columns) over memory that
  // the image owns and its next Download overwrites; untouched when there is nothing to read.
  virtual cv::Mat& Download(cv::Mat& matrix) = 0;
  virtual ~PXImage() = default;
  // Makes the texture (`existing` = 0), or adopts the existing GL texture of that name, and uploads
  // `pixels` when given. `stride` is bytes per row of `pixels` and of the read-back. 0, or 1: no
  // device, an unsupported layout or type, a size of 0, a stride below a row of `pixels`.
  virtual int32_t Create(uint32_t existing, uint32_t width, uint32_t height, PixelLayout layout,
                         DataType type, uint32_t stride, const void* pixels) = 0;
  // Each stores its argument and returns 0; Create calls them.
  virtual int32_t SetWidth(uint32_t width) = 0;
  virtual int32_t SetHeight(uint32_t height) = 0;
  virtual int32_t SetStride(uint32_t stride) = 0;
  virtual int32_t SetKindFlag(uint32_t flag) = 0;
  virtual int32_t SetPixelLayout(PixelLayout layout) = 0;
  virtual int32_t SetDataType(DataType type) = 0;
};

// A new image of that size, with `pixels` when not null. Null on failure: no current context, a
// size of 0 or above what the driver takes.
std::shared_ptr<PXImage> CreateImage(uint32_t width, uint32_t height, PixelLayout layout,
                                     DataType type, uint32_t stride, const void* pixels);

// An image of a matrix of type CV_8UC4 whose channels are in the order `layout`. Null on failure.
std::shared_ptr<PXImage> CreateImage(const cv::Mat& matrix, PixelLayout layout);

// An image of a host frame: its own texture for a frame on the GPU, else a texture of the frame's
// size that holds `pixels` when not null. Pixels travel to and from it in the order `layout`, by
// default that of frames. Keeps the frame. Null on failure.
std::shared_ptr<PXImage> CreateImageFromFrame(std::shared_ptr<EffectImage> frame,
                                              const void* pixels,
                                              PixelLayout layout = PixelLayout::kBgra);

// The same for an image kept from frame to frame: a null one is made, another one shows something
// new from then on, in the same texture where that has the right shape. Null after a failure.
void ReuseImage(std::shared_ptr<PXImage>& image, const cv::Mat& matrix, PixelLayout layout);
void ReuseImageFromFrame(std::shared_ptr<PXImage>& image, std::shared_ptr<EffectImage> frame,
                         const void* pixels);
// For a frame in memory, without its pixels so far: the image can be downloaded, and UploadFrame
// makes its texture show the frame before a draw reads it.
void ReuseImageOverFrame(std::shared_ptr<PXImage>& image, std::shared_ptr<EffectImage> frame);

// Sees to it that the image's texture shows the image. False when none can be made.
bool UploadFrame(PXImage& image);

struct ImageSize {
  uint32_t width;   // pixels
  uint32_t height;  // pixels
  friend bool operator==(const ImageSize&, const ImageSize&) = default;
};

// The size of the image's texture, which must exist.
ImageSize SizeOf(const PXImage& image);

// Whether the image has a texture that holds floats: values that are not limited to 0 to 1, and not
// cut to 8 bits.
bool HoldsFloats(const PXImage& image);

// Reads what was drawn into the image's texture into `destination`, rows `stride` bytes apart, also
// when the image wraps a host frame. False on failure; the destination is then untouched.
bool ReadTexture(const PXImage& image, void* destination, int32_t stride);

// Rows of a picture: `count` of them from `first` on.
struct RowSpan {
  uint32_t first;
  uint32_t count;
};

// The same for some rows, which the image has, of a whole picture without padding at `picture`;
// what that holds besides may be read too, or stays.
bool ReadTextureRows(const PXImage& image, RowSpan rows, uint8_t* picture);

}  // namespace krv
