#include "media/output_format.h"

#include "media/media_error.h"
#include "media/numbered_name.h"
#include "utf8_path.h"

namespace krv::host {
namespace {

std::string LowerCaseExtension(const std::filesystem::path& path) {
  std::string extension = Utf8(path.extension());
  for (char& c : extension) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return extension;
}

OutputFormat PngSequence(const std::filesystem::path& path) {
  if (path.has_filename()) NumberedName::Parse(path);
  OutputFormat format;
  format.kind = OutputKind::kPngSequence;
  format.alpha = true;
  return format;
}

}  // namespace

OutputFormat ChooseOutputFormat(const std::filesystem::path& path, bool transparent) {
  if (path.empty()) throw MediaError("the output has no name");
  const std::string extension = LowerCaseExtension(path);
  if (!path.has_filename() || extension == ".png") return PngSequence(path);
  if (path == "-") return {OutputKind::kRawStream, {}, {}, {}, true};
  if (extension == ".raw") return {OutputKind::kRawFile, {}, {}, {}, true};
  if (transparent && (extension == ".mp4" || extension == ".mkv")) {
    throw MediaError(Utf8(path) + ": " + extension +
                     " has no transparency; use .webm, .mov or a PNG sequence");
  }
  if (extension == ".mp4") return {OutputKind::kMovie, "mp4", "libx264", "aac", false};
  if (extension == ".mkv") return {OutputKind::kMovie, "matroska", "libx264", "aac", false};
  if (extension == ".mov") {
    return {OutputKind::kMovie, "mov", transparent ? "prores_ks" : "libx264", "aac", transparent};
  }
  if (extension == ".webm") {
    return {OutputKind::kMovie, "webm", "libvpx-vp9", "libopus", transparent};
  }
  throw MediaError(Utf8(path) +
                   ": unknown kind of output; use .mp4, .mkv, .mov, .webm, .png, .raw, "
                   "a folder name that ends in /, or - for standard output");
}

}  // namespace krv::host
