#include "studio/written_files.h"

#include "media/media_error.h"
#include "media/output_format.h"
#include "media/png_sequence_writer.h"
#include "platform/file_system.h"
#include "utf8_path.h"

namespace krv::studio {
namespace {

namespace fs = std::filesystem;

bool AnyPictureIsThere(const fs::path& path, int64_t frames) {
  const host::NumberedName name = host::NameOfPictures(path);
  if (!name.folder().empty() && !host::platform::IsFolder(name.folder())) return false;
  for (int64_t number = 0; number < frames; ++number) {
    if (host::platform::IsFile(name.folder() / name.NameOf(number))) return true;
  }
  return false;
}

}  // namespace

Replaces ReplacedByExport(const std::string& output, int64_t frames) {
  const fs::path path = host::PathFromUtf8(output);
  try {
    switch (host::ChooseOutputFormat(path, false).kind) {
      case host::OutputKind::kMovie:
      case host::OutputKind::kRawFile:
        return host::platform::IsFile(path) ? Replaces::kFile : Replaces::kNothing;
      case host::OutputKind::kPngSequence:
        return AnyPictureIsThere(path, frames) ? Replaces::kFiles : Replaces::kNothing;
      case host::OutputKind::kRawStream:
        break;
    }
  } catch (const host::MediaError&) {  // the export will say why
  }
  return Replaces::kNothing;
}

}  // namespace krv::studio
