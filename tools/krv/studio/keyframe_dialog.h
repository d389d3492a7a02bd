// Where the keyframes are saved, and whether to, before the studio is closed.
#pragma once

#include <filesystem>
#include <string>

#include "studio/ui.h"

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
  // Whether another file of this name would be lost.
  bool Replaces(const Studio& studio) const;
  bool open_ = false;
  bool closing_ = false;
  bool leave_ = false;
  std::string file_;
  std::string problem_;  // why it could not be saved
};

}  // namespace krv::studio
