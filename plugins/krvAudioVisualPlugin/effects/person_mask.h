// Where the mask of a frame comes from. All masks are of type CV_8UC4, top row first.
#pragma once

#include <opencv2/core.hpp>

namespace krv {

class EffectContext;
class PXImage;

// The host's mask, in place: a header over its pixels, which stay valid until the frame has been
// processed. Empty when the host has none for this frame, or says what makes no sense about it.
cv::Mat HostPersonMask(EffectContext& context);

// The image's pixels with 8-bit channels: 16-bit values divided by 255, floats times 255, limited
// to 0 to 255. May be a header over memory that the image owns. Empty when it cannot be read.
// [gl-thread]
cv::Mat EightBitPicture(PXImage& image);

// The host's mask or, when it has none, what the AI filter finds in the background, whose shorter
// side it sees with at most 160 pixels. Empty without either. [gl-thread]
cv::Mat PersonMask(EffectContext& context, PXImage& background);

}  // namespace krv
