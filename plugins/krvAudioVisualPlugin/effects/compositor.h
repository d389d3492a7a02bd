// How the effect gets over the input frame, into the output frame.
#pragma once

#include <cstdint>
#include <memory>

#include "graphics/px_image.h"
#include "krv/types.h"

namespace krv {

class EffectContext;
class EffectImage;
class FrameTimes;
struct ImageList;

// What one frame's effect is laid over with. Borrowed for the call.
struct Layers {
  std::shared_ptr<EffectImage> input;
  std::shared_ptr<EffectImage> output;
  const ImageList& inputs;  // of the passes; the first is the input frame's
  PXImage& effect;
  RowSpan seen_rows;  // of the effect; the others are without opacity
};

class Compositor {
 public:
  // Writes the output frame. 0, or 4 with the output untouched. [gl-thread]
  virtual int32_t LayOver(const Layers& layers, EffectContext& context, FrameTimes& times) = 0;

  // Whether the first input has to hold the input frame also where no pass reads it.
  virtual bool ReadsInputTexture() const = 0;

 protected:
  ~Compositor() = default;
};

}  // namespace krv
