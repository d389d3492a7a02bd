// Where the keyframes are saved, and whether to, before the studio is closed.
#pragma once

#include <filesystem>
#include <string>

#include "studio/ui.h"
#include "studio/written_files.h"

namespace krv::studio {

class KeyframeDialog {
 public:
  bool open() const { return open_; }
  void Open(const Studio& studio, bool closing);
  void Dismiss() { open_ = false; }
  // Into the file that is named; closes the dialogue, unless that cannot be.
  void Save(Studio* studio);

  void Draw(const Ui& ui);

  // Whether the user has decided that the studio is to be closed.
  bool TakesLeave() const { return leave_; }

 private:
  std::filesystem::path File() const;
  // Of the files that are not the studio's own.
  Replaces Replaced(const Studio& studio) const;

  bool open_ = false;
  bool closing_ = false;
  bool leave_ = false;
  std::string file_;
  std::string problem_;  // why it could not be saved
};

}  // namespace krv::studio
