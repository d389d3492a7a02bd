#include "studio/gradient_editor.h"

#include <algorithm>
#include <cmath>

#include "studio/widgets.h"

namespace krv::studio {
namespace {

constexpr float kStripHeight = 22;
constexpr float kHandle = 14;
constexpr float kAway = 40;  // below the strip a stop is dragged off

void DrawStrip(const Ui& ui, ImVec2 start, float width, const Gradient& gradient) {
  ImDrawList* list = ImGui::GetWindowDrawList();
  const float height = ui.look.Px(kStripHeight);
  const float end = start.x + width;
  float x = start.x;
  ImU32 colour = OpaqueColour(gradient.stops().front().colour);
  for (const tool::GradientStop& stop : gradient.stops()) {
    const float next = std::clamp(start.x + width * stop.position / 100, x, end);
    const ImU32 next_colour = OpaqueColour(stop.colour);
    list->AddRectFilledMultiColor({x, start.y}, {next, start.y + height}, colour, next_colour,
                                  next_colour, colour);
    x = next;
    colour = next_colour;
  }
  list->AddRectFilled({x, start.y}, {end, start.y + height}, colour);
  list->AddRect(start, {end, start.y + height}, ui.look.colours().line, 0);
}

// A drop whose tip touches the strip.
void DrawHandle(const Ui& ui, ImVec2 tip, ImU32 colour, bool selected) {
  const Palette& colours = ui.look.colours();
  ImDrawList* list = ImGui::GetWindowDrawList();
  const float half = ui.look.Px(kHandle) / 2;
  const ImU32 rim = selected ? colours.accent : colours.dim;
  const ImVec2 middle{tip.x, tip.y + half * 1.3f};
  list->AddTriangleFilled({tip.x, tip.y}, {tip.x + half * 0.7f, tip.y + half * 0.8f},
                          {tip.x - half * 0.7f, tip.y + half * 0.8f}, rim);
  list->AddCircleFilled(middle, half, rim, 24);
  list->AddCircleFilled(middle, half - ui.look.Px(selected ? 3 : 2), colours.panel, 24);
  list->AddCircleFilled(middle, half - ui.look.Px(selected ? 3 : 2), colour, 24);
}

}  // namespace

bool GradientEditor::DrawStops(const Ui& ui, const std::string& id, ImVec2 start, float width,
                               Gradient* gradient) {
  const float strip = ui.look.Px(kStripHeight);
  const float side = ui.look.Px(kHandle);
  size_t& selected = selected_[id];
  bool changed = false;
  const auto position_of = [=](float x) { return 100 * (x - start.x) / width; };
  for (size_t i = 0; i < gradient->stops().size(); ++i) {
    const tool::GradientStop& stop = gradient->stops()[i];
    const ImVec2 tip{start.x + width * stop.position / 100, start.y + strip};
    ImGui::SetCursorScreenPos({tip.x - side / 2, tip.y});
    const std::string name = id + "/stop/" + std::to_string(i);
    // The one that is dragged keeps its identity when it passes another.
    ImGui::PushID(static_cast<int>(i));
    ImGui::InvisibleButton(name.c_str(), {side, side * 1.3f},
                           ImGuiButtonFlags_MouseButtonLeft | ImGuiButtonFlags_MouseButtonRight);
    ImGui::PopID();
    ui.marks.SetItem(name);
    const bool drop = (ImGui::IsItemHovered() && ImGui::IsMouseClicked(1)) ||
                      (ImGui::IsItemActive() && ImGui::IsMouseDown(0) &&
                       ImGui::GetIO().MousePos.y > tip.y + ui.look.Px(kAway));
    if (drop && gradient->Remove(i)) {
      selected = std::min(selected, gradient->stops().size() - 1);
      return true;
    }
    if (ImGui::IsItemActivated()) selected = i;
    if (ImGui::IsItemActive() && ImGui::IsMouseDragging(0, 1)) {
      // Never past a neighbour: which of two in one place is meant would not be told.
      const auto& stops = gradient->stops();
      const float low = i > 0 ? stops[i - 1].position : 0;
      const float high = i + 1 < stops.size() ? stops[i + 1].position : 100;
      const float target = std::clamp(position_of(ImGui::GetIO().MousePos.x), low, high);
      if (std::abs(target - stops[i].position) >= 0.05f) {
        const uint32_t colour = stops[i].colour;
        Gradient moved = *gradient;
        const size_t at = moved.Move(i, target);
        if (at == i && moved.stops()[at].colour == colour) {
          *gradient = moved;
          changed = true;
        }
      }
    }
    DrawHandle(ui, tip, OpaqueColour(gradient->stops()[i].colour), i == selected);
  }
  return changed;
}

bool GradientEditor::DrawDetails(const Ui& ui, const std::string& id, float width,
                                 Gradient* gradient) {
  size_t& selected = selected_[id];
  selected = std::min(selected, gradient->stops().size() - 1);
  const tool::GradientStop stop = gradient->stops()[selected];
  bool changed = false;
  int rgb = static_cast<int>(stop.colour);
  if (ColourField(ui, (id + "/colour").c_str(), &rgb, {ui.look.Px(40), ui.look.Px(24)})) {
    gradient->Recolour(selected, static_cast<uint32_t>(rgb));
    changed = true;
  }
  ImGui::SameLine();
  ImGui::SetNextItemWidth(ui.look.Px(64));
  float position = stop.position;
  ImGui::PushFont(ui.look.fonts().small);
  if (ImGui::InputFloat("##position", &position, 0, 0, "%.1f %%")) {
    selected = gradient->Move(selected, position);
    changed = true;
  }
  ui.marks.SetItem(id + "/position");
  ImGui::PopFont();
  ImGui::SameLine();
  const ImVec2 at = ImGui::GetCursorScreenPos();
  PutText(
      ImGui::GetWindowDrawList(), ui.look.fonts().small, {at.x, at.y + ui.look.Px(5)},
      ui.look.colours().dim,
      "stop " + std::to_string(selected + 1) + " of " + std::to_string(gradient->stops().size()));
  ImGui::SameLine(width - ui.look.Px(24) + ImGui::GetCursorStartPos().x);
  const bool removable = gradient->stops().size() > 2;
  ImGui::BeginDisabled(!removable);
  if (IconButton(ui, (id + "/remove").c_str(), Icon::kClose, "Remove this stop", false, 24) &&
      gradient->Remove(selected)) {
    changed = true;
  }
  ImGui::EndDisabled();
  selected = std::min(selected, gradient->stops().size() - 1);
  return changed;
}

bool GradientEditor::Draw(const Ui& ui, const std::string& id, float width, Gradient* gradient) {
  ImGui::PushID(id.c_str());
  const ImVec2 start = ImGui::GetCursorScreenPos();
  const float strip = ui.look.Px(kStripHeight);
  DrawStrip(ui, start, width, *gradient);
  bool changed = false;
  if (ImGui::InvisibleButton((id + "/strip").c_str(), {width, strip})) {
    const float at = 100 * (ImGui::GetIO().MousePos.x - start.x) / width;
    selected_[id] = gradient->Add(at);
    changed = true;
  }
  ui.marks.SetItem(id + "/strip");
  Tip(ui, "Click to add a stop");
  changed = DrawStops(ui, id, start, width, gradient) || changed;
  ImGui::SetCursorScreenPos(
      {start.x, start.y + strip + ui.look.Px(kHandle) * 1.3f + ui.look.Px(8)});
  changed = DrawDetails(ui, id, width, gradient) || changed;
  ImGui::PopID();
  return changed;
}

}  // namespace krv::studio
