#include "gallery/gallery_writer.h"

#include <algorithm>
#include <fstream>
#include <system_error>
#include <utility>

#include "media/jpeg_encoder.h"
#include "media/media_error.h"
#include "media/part_file.h"
#include "media/png_encoder.h"
#include "platform/file_system.h"
#include "utf8_path.h"

namespace krv::tool {

using host::MediaError;
namespace {

// The display name, or the unique name where the sheet's font has no letters for it.
const std::string& SheetName(const host::EffectListing& effect) {
  const bool ascii = std::all_of(effect.display_name.begin(), effect.display_name.end(),
                                 [](char c) { return c >= ' ' && c <= '~'; });
  return ascii ? effect.display_name : effect.unique_name;
}

}  // namespace

GalleryWriter::GalleryWriter(std::filesystem::path folder) : folder_(std::move(folder)) {
  std::error_code error;
  is_new_ = host::platform::CreateFolder(folder_, error);
  if (error) throw MediaError(host::Utf8(folder_) + ": " + error.message());
  if (!host::platform::IsFolder(folder_)) throw MediaError(host::Utf8(folder_) + ": is no folder");
}

GalleryWriter::~GalleryWriter() {
  const auto entries = host::platform::ListFolder(folder_);
  std::error_code ignored;
  if (is_new_ && entries && entries->empty()) host::platform::Remove(folder_, ignored);
}

void GalleryWriter::Add(const host::EffectListing& effect, host::Picture still, std::string film) {
  cards_.push_back(
      {effect, host::EncodeJpeg(still), std::move(film), still.width(), still.height()});
  sheet_.push_back({SheetName(effect), std::move(still)});
}

void GalleryWriter::Finish() const {
  WriteSheet();
  WritePage();
}

void GalleryWriter::WritePage() const {
  host::PartFile part(page());
  std::ofstream file(host::platform::OpenablePath(part.path()), std::ios::binary);
  file << GalleryPage(cards_);
  file.close();
  if (!file) throw MediaError(host::Utf8(page()) + ": cannot be written");
  part.Commit();
}

void GalleryWriter::WriteSheet() const {
  host::PartFile part(folder_ / kSheetName);
  host::PngEncoder().Write(MakeContactSheet(sheet_), part.path());
  part.Commit();
}

}  // namespace krv::tool
