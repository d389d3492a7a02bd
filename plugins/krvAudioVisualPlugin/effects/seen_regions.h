// Where in a picture a figure can be seen, so that the rest need not be drawn.
#pragma once

#include <cstdint>
#include <vector>

#include "graphics/px_graphics_context.h"

namespace krv {

// Collects boxes and gives the parts of the target that hold them all, in few pieces along the
// tiles that software renderers work by. Keeps its memory.
class SeenRegions {
 public:
  // Starts for a target of that size in pixels.
  void Start(int32_t width, int32_t height);
  // A box, in pixels; may lie outside in part or as a whole. Values that are no numbers count as
  // everywhere.
  void Add(float left, float top, float right, float bottom);
  // Writes the regions, from left to right.
  void Take(std::vector<TargetRegion>& regions) const;

 private:
  static constexpr int32_t kTile = 64;  // pixels

  struct Strip {
    int32_t top;  // tiles
    int32_t bottom;
  };

  int32_t width_ = 0;
  int32_t height_ = 0;
  std::vector<Strip> strips_;  // one tile wide each; empty where top is not above bottom
};

}  // namespace krv
