// The input textures of a frame.
#pragma once

#include <memory>
#include <vector>

namespace krv {

class PXImage;

// In sampler-unit order; entries are never null.
struct ImageList {
  std::vector<std::shared_ptr<PXImage>> images;
};

}  // namespace krv
