// Where the clip is rendered to, and how far that is.
#pragma once

#include <string>

#include "studio/ui.h"

namespace krv::studio {

class ExportDialog {
 public:
  bool open() const { return open_; }
  void Open(const Studio& studio);
  // Closes it, and ends a render that is under way.
  void Dismiss(Studio* studio);

  void Draw(const Ui& ui);

 private:
  void DrawWishes(const Ui& ui);
  void DrawProgress(const Ui& ui);
  void DrawResult(const Ui& ui);

  bool open_ = false;
  std::string output_;
  bool transparent_ = false;
};

}  // namespace krv::studio
