// What is wrong with the package's files.
#pragma once

#include "studio/ui.h"

namespace krv::studio {

// The height that the panel wants, in pixels; 0 when nothing is wrong.
float ProblemHeight(const Ui& ui);

// Fills the space there is.
void DrawProblems(const Ui& ui);

}  // namespace krv::studio
