#include <stdexcept>

#include "effects/gradient.h"
#include "fuzz/require.h"
#include "fuzz/targets.h"

namespace krv::fuzz {

void ReadGradient(std::string_view bytes) {
  try {
    const auto image = ParseGradient(bytes);
    if (!image) return;
    Require(image->type() == CV_8UC4 && image->rows == 1, "a gradient is one row of pixels");
    Require(image->cols >= 1 && image->cols <= kMaxGradientStops, "a gradient fits a texture");
  } catch (const std::invalid_argument&) {
  } catch (const std::out_of_range&) {
  }
}

}  // namespace krv::fuzz
