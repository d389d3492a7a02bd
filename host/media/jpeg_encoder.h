// Pictures as JPEG files in memory.
#pragma once

#include <string>

#include "media/picture.h"

namespace krv::host {

// A file of high quality with a colour for every pixel; alpha is left out. Throws MediaError.
std::string EncodeJpeg(const Picture& picture);

}  // namespace krv::host
