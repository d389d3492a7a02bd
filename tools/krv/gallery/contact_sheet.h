// All stills of a gallery on one picture.
#pragma once

#include <string>
#include <vector>

#include "media/picture.h"

namespace krv::tool {

struct SheetEntry {
  std::string name;  // ASCII: the picture's font has no other letters
  host::Picture still;
};

// The stills in rows with their names below. Needs at least one.
host::Picture MakeContactSheet(const std::vector<SheetEntry>& entries);

}  // namespace krv::tool
