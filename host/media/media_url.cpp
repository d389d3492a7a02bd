#include "media/media_url.h"

#include "platform/file_system.h"
#include "utf8_path.h"

namespace krv::host {

std::string MediaUrl(const std::filesystem::path& path) {
  return "file:" + Utf8(platform::OpenablePath(path));
}

}  // namespace krv::host
