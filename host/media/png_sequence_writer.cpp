#include "media/png_sequence_writer.h"

#include <system_error>

#include "folder_tree.h"
#include "media/media_error.h"
#include "platform/file_system.h"
#include "utf8_path.h"

namespace krv::host {
namespace fs = std::filesystem;
namespace {

void Check(const std::error_code& error, const fs::path& path) {
  if (error) throw MediaError(Utf8(path) + ": " + error.message());
}

// Beside the folder when that is still to be made, else inside it: always on the same disk.
fs::path PartFolder(const fs::path& folder) {
  if (folder.empty() || platform::IsFolder(folder)) return folder / ".krv.part";
  fs::path part = folder;
  part += ".part";
  return part;
}

}  // namespace

NumberedName NameOfPictures(const fs::path& path) {
  return NumberedName::Parse(path.has_filename() ? path : path / "frame_%06d.png");
}

PngSequenceWriter::PngSequenceWriter(const fs::path& path, int64_t first_frame)
    : name_(NameOfPictures(path)),
      part_folder_(PartFolder(name_.folder())),
      first_(first_frame),
      next_(first_frame) {
  std::error_code error;
  platform::CreateFolder(part_folder_, error);
  Check(error, part_folder_);
}

PngSequenceWriter::~PngSequenceWriter() { RemoveTree(part_folder_); }

void PngSequenceWriter::Write(const Picture& picture, const std::vector<int16_t>&) {
  encoder_.Write(picture, part_folder_ / name_.NameOf(next_));
  ++next_;
}

void PngSequenceWriter::Finish() {
  std::error_code error;
  if (!name_.folder().empty()) platform::CreateFolder(name_.folder(), error);
  Check(error, name_.folder());
  for (int64_t number = first_; number < next_; ++number) {
    const fs::path file = name_.folder() / name_.NameOf(number);
    platform::Rename(part_folder_ / name_.NameOf(number), file, error);
    Check(error, file);
  }
  platform::Remove(part_folder_, error);
}

}  // namespace krv::host
