// Where the system keeps its fonts.
#pragma once

#include <filesystem>

namespace krv::studio {

// Files of one family; empty when there is none.
struct FontFiles {
  std::filesystem::path regular;
  std::filesystem::path strong;
};

// The first family of those that suit a window, among the usual folders.
FontFiles FindFonts();

}  // namespace krv::studio
