#include "effects/seen_regions.h"

#include <algorithm>

namespace krv {
namespace {

// The tile that a place lies in, of `count`.
int32_t TileOf(float place, float tile, int32_t count) {
  return static_cast<int32_t>(std::clamp(place / tile, 0.0F, static_cast<float>(count - 1)));
}

int32_t TilesFor(int32_t pixels, int32_t tile) { return (pixels + tile - 1) / tile; }

}  // namespace

void SeenRegions::Start(int32_t width, int32_t height) {
  width_ = width;
  height_ = height;
  strips_.assign(static_cast<size_t>(TilesFor(width, kTile)), {TilesFor(height, kTile), 0});
}

void SeenRegions::Add(float left, float top, float right, float bottom) {
  const auto width = static_cast<float>(width_);
  const auto height = static_cast<float>(height_);
  if (left > width || right < 0 || top > height || bottom < 0) return;
  const bool known = left <= right && top <= bottom;
  const int32_t across = TilesFor(width_, kTile);
  const int32_t down = TilesFor(height_, kTile);
  const int32_t first = known ? TileOf(left, kTile, across) : 0;
  const int32_t last = known ? TileOf(right, kTile, across) : across - 1;
  const int32_t above = known ? TileOf(top, kTile, down) : 0;
  const int32_t below = known ? TileOf(bottom, kTile, down) + 1 : down;
  for (int32_t i = first; i <= last; ++i) {
    Strip& strip = strips_[static_cast<size_t>(i)];
    strip.top = std::min(strip.top, above);
    strip.bottom = std::max(strip.bottom, below);
  }
}

void SeenRegions::Take(std::vector<TargetRegion>& regions) const {
  regions.clear();
  for (size_t i = 0; i < strips_.size(); ++i) {
    const Strip& strip = strips_[i];
    if (strip.top >= strip.bottom) continue;
    const auto x = static_cast<int32_t>(i) * kTile;
    const int32_t y = strip.top * kTile;
    const TargetRegion region = {x, y, std::min(kTile, width_ - x),
                                 std::min(strip.bottom * kTile, height_) - y};
    TargetRegion* before = regions.empty() ? nullptr : &regions.back();
    if (before != nullptr && before->x + before->width == x && before->y == region.y &&
        before->height == region.height) {
      before->width += region.width;
    } else {
      regions.push_back(region);
    }
  }
}

}  // namespace krv
