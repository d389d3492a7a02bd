#include "media/part_file.h"

#include <system_error>

#include "media/media_error.h"
#include "platform/file_system.h"
#include "utf8_path.h"

namespace krv::host {
namespace fs = std::filesystem;

PartFile::PartFile(fs::path final_path) : final_path_(std::move(final_path)) {
  fs::path name(".");
  name += final_path_.stem();
  name += ".part";
  name += final_path_.extension();
  part_path_ = final_path_.parent_path() / name;
}

PartFile::~PartFile() {
  std::error_code ignored;
  platform::Remove(part_path_, ignored);
}

void PartFile::Commit() {
  std::error_code error;
  platform::Rename(part_path_, final_path_, error);
  if (error) throw MediaError(Utf8(final_path_) + ": " + error.message());
}

}  // namespace krv::host
