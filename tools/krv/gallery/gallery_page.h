// The gallery as one HTML page.
#pragma once

#include <string>
#include <vector>

#include "registrar.h"

namespace krv::tool {

struct GalleryCard {
  host::EffectListing effect;
  std::string still;    // a JPEG file's bytes
  std::string preview;  // a WebM file's bytes
  int width = 0;        // pixels, of both
  int height = 0;       // pixels, of both
};

// The page with the cards in this order. It carries the pictures and films itself and loads
// nothing.
std::string GalleryPage(const std::vector<GalleryCard>& cards);

}  // namespace krv::tool
