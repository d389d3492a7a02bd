#include "studio/saved_file.h"

#include <fstream>
#include <system_error>

#include "media/media_error.h"
#include "media/part_file.h"
#include "platform/file_system.h"
#include "utf8_path.h"

namespace krv::studio {

namespace platform = host::platform;

bool SaveFile(const std::filesystem::path& file, std::string_view text, const std::string& instead,
              std::string* error) {
  const std::filesystem::path target = platform::BehindLinks(file);
  // Who may write into the folder could replace it all the same.
  if (platform::IsWriteProtected(target)) {
    *error = host::Utf8(file) + ": is write-protected; " + instead;
    return false;
  }
  try {
    host::PartFile part(target);
    std::ofstream out(platform::OpenablePath(part.path()), std::ios::binary | std::ios::trunc);
    std::error_code refused;
    // Before there is anything to read in it.
    if (out && platform::IsFile(target)) {
      platform::CopyPermissions(target, part.path(), refused);
    }
    out << text;
    out.close();
    if (!out || refused) {
      *error = host::Utf8(file) + ": cannot be written; " + instead;
      return false;
    }
    part.Commit();
  } catch (const host::MediaError& failure) {
    *error = failure.what();
    return false;
  }
  return true;
}

}  // namespace krv::studio
