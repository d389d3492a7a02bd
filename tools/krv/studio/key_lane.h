// The keys under the timeline.
#pragma once

#include <cstdint>
#include <optional>

#include "studio/ui.h"

namespace krv::studio {

// Shows the keys of all parameters; of a chosen one they stand out. A click goes to a key, a drag
// moves it; those of all parameters at that frame, or of the chosen one.
class KeyLane {
 public:
  static constexpr float kHeight = 18;  // units

  // `from` to `from` + `width` is the whole clip.
  void Draw(const Ui& ui, ImVec2 from, float width);

 private:
  std::optional<int64_t> held_;  // frame of the keys that the mouse has hold of
};

}  // namespace krv::studio
