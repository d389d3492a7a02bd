#include "studio/key_lane.h"

#include <cmath>
#include <string>

#include "studio/key_toggle.h"
#include "studio/widgets.h"

namespace krv::studio {
namespace {

constexpr float kReach = 7;  // units around a key in which it is meant
constexpr float kHalf = 5;   // units from a diamond's centre to its corners

// A diamond; a disc for the way that begins and ends at rest, a square for the one that holds.
void DrawKey(ImDrawList* list, ImVec2 centre, float half, ImU32 colour,
             std::optional<tool::Way> way) {
  if (way == tool::Way::kSmooth) {
    list->AddCircleFilled(centre, 0.85f * half, colour, 16);
  } else if (way == tool::Way::kHold) {
    const float side = 0.75f * half;
    list->AddRectFilled({centre.x - side, centre.y - side}, {centre.x + side, centre.y + side},
                        colour);
  } else {
    DrawDiamond(list, centre, half, colour, true);
  }
}

}  // namespace

void KeyLane::Draw(const Ui& ui, ImVec2 from, float width) {
  Studio& studio = ui.studio;
  const Palette& colours = ui.look.colours();
  if (studio.keys().empty()) {
    held_.reset();
    return;
  }
  const auto count = static_cast<double>(studio.clip().frame_count());
  const auto place = [&](int64_t frame) {
    return from.x + width * static_cast<float>(static_cast<double>(frame) / count);
  };
  const std::string& chosen = studio.chosen();
  const auto frames = studio.keys().Frames(chosen);
  const ImVec2 mouse = ImGui::GetIO().MousePos;
  std::optional<int64_t> under;
  for (const int64_t frame : frames) {
    const float distance = std::abs(place(frame) - mouse.x);
    if (distance > ui.look.Px(kReach)) continue;
    if (!under || distance < std::abs(place(*under) - mouse.x)) under = frame;
  }
  const float reach = ui.look.Px(kReach);
  const float height = ui.look.Px(kHeight);
  ImGui::SetCursorScreenPos({from.x - reach, from.y});
  ImGui::InvisibleButton("key_lane", {width + 2 * reach, height});
  const bool hovered = ImGui::IsItemHovered();
  if (ImGui::IsItemActivated() && under) {
    studio.Pause();
    studio.SeekFrame(*under);
    held_ = under;
  }
  if (!ImGui::IsItemActive()) held_.reset();
  if (held_ && ImGui::IsMouseDragging(0, 2)) {
    const double share = static_cast<double>((mouse.x - from.x) / width);
    held_ = studio.MoveKeys(*held_, std::llround(share * count));
  }
  if (hovered && under) {
    ImGui::SetMouseCursor(ImGuiMouseCursor_ResizeEW);
    Tip(ui, chosen.empty() ? "Click to go to these keys, drag to move them"
                           : "Click to go to this key, drag to move it");
  }

  ImDrawList* list = ImGui::GetWindowDrawList();
  const float y = from.y + height / 2;
  list->AddLine({from.x, y}, {from.x + width, y}, colours.line, 1);
  const auto draw = [&](int64_t frame, ImU32 colour, float half, std::optional<tool::Way> way) {
    if (static_cast<double>(frame) >= count) return;
    const ImVec2 centre{std::round(place(frame)), y};
    DrawKey(list, centre, ui.look.Px(half) + ui.look.Px(2), colours.panel, way);
    DrawKey(list, centre, ui.look.Px(half), colour, way);
  };
  if (!chosen.empty()) {
    for (const int64_t frame : studio.keys().Frames({})) {
      draw(frame, colours.faint, kHalf - 1.5f, {});
    }
  }
  const int64_t now = studio.frame_now();
  for (const int64_t frame : studio.keys().Frames(chosen)) {
    const bool lit = frame == now || held_ == frame || (hovered && !held_ && under == frame);
    draw(frame, lit ? colours.text : colours.accent, kHalf, studio.keys().WayFrom(chosen, frame));
    const ImVec2 centre{place(frame), y};
    ui.marks.Set("lane/" + std::to_string(frame), {centre.x - reach, centre.y - reach},
                 {centre.x + reach, centre.y + reach});
  }
}

}  // namespace krv::studio
