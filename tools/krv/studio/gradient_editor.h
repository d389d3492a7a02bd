// The control for a parameter whose text is a gradient.
#pragma once

#include <map>
#include <string>

#include "studio/gradient.h"
#include "studio/ui.h"

namespace krv::studio {

// A click on the strip adds a stop, a drag moves one, a click selects it; a click with the other
// button, the cross, or dragging it away from the strip removes it.
class GradientEditor {
 public:
  // Whether *gradient was changed. `id` tells gradients apart.
  bool Draw(const Ui& ui, const std::string& id, float width, Gradient* gradient);

 private:
  bool DrawStops(const Ui& ui, const std::string& id, ImVec2 start, float width,
                 Gradient* gradient);
  bool DrawDetails(const Ui& ui, const std::string& id, float width, Gradient* gradient);

  std::map<std::string, size_t> selected_;  // stop, by gradient
};

}  // namespace krv::studio
