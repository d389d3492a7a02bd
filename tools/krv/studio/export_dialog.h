// Where the clip is rendered to, and how far that is.
#pragma once

#include <string>
#include <utility>

#include "studio/ui.h"
#include "studio/written_files.h"

namespace krv::studio {

class ExportDialog {
 public:
  bool open() const { return open_; }
  void Open(const Studio& studio);
  // Takes a question back, ends a render that is under way, or closes the dialogue.
  void Dismiss(Studio* studio);
  // Asks whether the studio is to be closed while a render is under way.
  void AskToClose();

  void Draw(const Ui& ui);

  // Whether the user has decided that it is, once.
  bool TakesLeave() { return std::exchange(leave_, false); }

 private:
  // Looks at the files now and then only: a sequence has many.
  Replaces Replaced(const Studio& studio, bool now);
  void DrawWishes(const Ui& ui);
  void DrawProgress(const Ui& ui);
  void DrawResult(const Ui& ui);

  bool open_ = false;
  bool closing_ = false;
  bool leave_ = false;
  std::string output_;
  bool transparent_ = false;
  Replaces replaces_ = Replaces::kNothing;  // by the name below, at that time
  std::string looked_for_;
  double looked_ = 0;
};

}  // namespace krv::studio
