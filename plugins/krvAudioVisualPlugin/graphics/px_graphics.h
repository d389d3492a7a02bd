// The graphics device that effects draw with.
#pragma once

#include <cstdint>
#include <memory>

namespace krv {

class PXGraphicsContext;
class PXImage;

// A device. All operations: on the thread whose GL context is current; none throws.
class PXGraphics {
 public:
  // Makes the device usable. 0, or 1 when there is nothing to draw with.
  virtual int32_t Initialize() = 0;
  // Directs the calling thread's draws at the image's texture, which the caller keeps alive until
  // the target changes; null: at nothing. 0, or 1 when the device is not usable.
  virtual int32_t SetTarget(PXImage* image) = 0;
  // Draws into the target. 0, or 1 when the draw is refused or fails.
  virtual int32_t Render(const PXGraphicsContext& context) = 0;
  virtual ~PXGraphics() = default;
};

// A device that draws nothing and reports success.
class PXGraphicsNull : public PXGraphics {
 public:
  int32_t Initialize() override { return 0; }
  int32_t SetTarget(PXImage*) override { return 0; }
  int32_t Render(const PXGraphicsContext&) override { return 0; }
};

// Waits until the GPU has done everything asked of it in the current context.
void FinishGraphics();

enum class GraphicsKind : int32_t { kNull = 0, kOpenGl = 1 };

// A usable device, or null when the OpenGL kind finds no current context to draw in. Any kind other
// than kOpenGl gives a PXGraphicsNull. Devices are cheap: all OpenGL ones share one implementation.
std::shared_ptr<PXGraphics> CreateGraphics(GraphicsKind kind);

}  // namespace krv
