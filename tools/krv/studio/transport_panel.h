// Play, the timeline, and how the picture is drawn.
#pragma once

#include <vector>

#include "studio/key_lane.h"
#include "studio/ui.h"

namespace krv::studio {

class TransportPanel {
 public:
  static constexpr float kHeight = 130;  // units

  // Fills the space there is.
  void Draw(const Ui& ui);

 private:
  void DrawTimeline(const Ui& ui, float width);
  void DrawButtons(const Ui& ui, float width);
  // Of how the picture is drawn; from `end` to the left, `room` at most.
  void DrawChoices(const Ui& ui, ImVec2 end, float room);

  KeyLane keys_;
  std::vector<float> peaks_;  // of the sound, one a column of the timeline
  bool was_playing_ = false;  // before the timeline was taken hold of
};

}  // namespace krv::studio
