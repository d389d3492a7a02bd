// What the parts of the window are drawn with.
#pragma once

#include "studio/look.h"
#include "studio/marks.h"
#include "studio/studio.h"

namespace krv::studio {

struct Ui {
  const Look& look;
  Marks& marks;
  Studio& studio;
};

}  // namespace krv::studio
