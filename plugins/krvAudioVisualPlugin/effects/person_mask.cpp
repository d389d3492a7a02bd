#include "effects/person_mask.h"

#include <cstdint>
#include <opencv2/imgproc.hpp>

#include "effects/ai_filter.h"
#include "effects/shrink.h"
#include "graphics/px_image.h"
#include "krv/effect_context.h"

namespace krv {
namespace {

constexpr int kFilterSide = 160;  // pixels

}  // namespace

cv::Mat HostPersonMask(EffectContext& context) {
  PersonMaskSource* source = nullptr;
  const int32_t code =
      context.QueryProperty(kPersonMaskProperty, kPropertyPointer, &source, sizeof(void*));
  if (code != kOk || source == nullptr) return {};
  uint8_t* pixels = nullptr;
  int32_t width = 0;
  int32_t height = 0;
  int32_t stride = 0;
  if (source->GetMask(&pixels, &width, &height, &stride) == 0) return {};
  const bool sensible =
      pixels != nullptr && width > 0 && height > 0 && stride >= int64_t{width} * 4;
  return sensible ? cv::Mat(height, width, CV_8UC4, pixels, static_cast<size_t>(stride))
                  : cv::Mat();
}

cv::Mat EightBitPicture(PXImage& image) {
  cv::Mat picture;
  image.Download(picture);
  if (picture.empty() || picture.depth() == CV_8U) return picture;
  // A texture of floats is read back as such, under the type of 16-bit values.
  if (HoldsFloats(image)) {
    picture = cv::Mat(picture.rows, picture.cols, CV_32FC4, picture.data, picture.step[0]);
  }
  cv::Mat converted;
  if (picture.depth() == CV_32F) {
    // What is far too bright would overflow in the conversion instead of being limited.
    cv::threshold(picture, converted, 1.0, 0, cv::THRESH_TRUNC);
    converted.convertTo(converted, CV_8U, 255.0);
  } else {
    picture.convertTo(converted, CV_8U, 1.0 / 255.0);
  }
  return converted;
}

cv::Mat PersonMask(EffectContext& context, PXImage& background) {
  cv::Mat mask = HostPersonMask(context);
  if (!mask.empty()) return mask;
  return AiFilter::Instance().Run(ShrinkToShorterSide(EightBitPicture(background), kFilterSide));
}

}  // namespace krv
