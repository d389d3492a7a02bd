// A gallery's files.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "gallery/contact_sheet.h"
#include "gallery/gallery_page.h"

namespace krv::tool {

inline constexpr char kPageName[] = "index.html";
inline constexpr char kSheetName[] = "contact_sheet.png";

// Effects as they are collected, and the files that are made of them.
class GalleryWriter {
 public:
  // Makes the folder if there is none; the one that it lies in must exist. Throws MediaError.
  explicit GalleryWriter(std::filesystem::path folder);
  // Removes the folder again if it is new and nothing was written into it.
  ~GalleryWriter();
  GalleryWriter(const GalleryWriter&) = delete;
  GalleryWriter& operator=(const GalleryWriter&) = delete;

  // Throws MediaError.
  void Add(const host::EffectListing& effect, host::Picture still, std::string film);

  size_t size() const { return cards_.size(); }
  std::filesystem::path page() const { return folder_ / kPageName; }

  // Writes the page and the contact sheet, in place of older ones. Throws MediaError.
  void Finish() const;

 private:
  void WritePage() const;
  void WriteSheet() const;

  std::filesystem::path folder_;
  bool is_new_ = false;  // the folder
  std::vector<GalleryCard> cards_;
  std::vector<SheetEntry> sheet_;
};

}  // namespace krv::tool
