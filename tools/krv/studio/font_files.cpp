#include "studio/font_files.h"

#include <cstdlib>
#include <string>
#include <vector>

#include "platform/file_system.h"
#include "utf8_path.h"

namespace krv::studio {
namespace {

struct Family {
  const char* regular;
  const char* strong;
};
constexpr Family kFamilies[] = {
    {"opentype/inter/Inter-Regular.otf", "opentype/inter/Inter-SemiBold.otf"},
    {"truetype/roboto/unhinted/RobotoTTF/Roboto-Regular.ttf",
     "truetype/roboto/unhinted/RobotoTTF/Roboto-Medium.ttf"},
    {"truetype/noto/NotoSans-Regular.ttf", "truetype/noto/NotoSans-SemiBold.ttf"},
    {"truetype/noto/NotoSans-Regular.ttf", "truetype/noto/NotoSans-Bold.ttf"},
    {"truetype/open-sans/OpenSans-Regular.ttf", "truetype/open-sans/OpenSans-Semibold.ttf"},
    {"truetype/dejavu/DejaVuSans.ttf", "truetype/dejavu/DejaVuSans-Bold.ttf"},
    {"truetype/liberation/LiberationSans-Regular.ttf",
     "truetype/liberation/LiberationSans-Bold.ttf"},
    {"segoeui.ttf", "seguisb.ttf"},
};

std::vector<std::filesystem::path> Folders() {
  std::vector<std::filesystem::path> folders;
  if (const char* data = std::getenv("XDG_DATA_HOME")) {
    folders.push_back(host::PathFromUtf8(data) / "fonts");
  }
  if (const char* home = std::getenv("HOME")) {
    folders.push_back(host::PathFromUtf8(home) / ".local/share/fonts");
  }
  folders.emplace_back("/usr/local/share/fonts");
  folders.emplace_back("/usr/share/fonts");
  if (const char* windows = std::getenv("WINDIR")) {
    folders.push_back(host::PathFromUtf8(windows) / "Fonts");
  }
  return folders;
}

}  // namespace

FontFiles FindFonts() {
  for (const Family& family : kFamilies) {
    for (const std::filesystem::path& folder : Folders()) {
      const FontFiles files{folder / family.regular, folder / family.strong};
      if (host::platform::IsFile(files.regular) && host::platform::IsFile(files.strong)) {
        return files;
      }
    }
  }
  return {};
}

}  // namespace krv::studio
