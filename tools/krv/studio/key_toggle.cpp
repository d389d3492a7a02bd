#include "studio/key_toggle.h"

#include <optional>
#include <string>

#include "keyframes/gradient_stops.h"
#include "studio/widgets.h"

namespace krv::studio {
namespace {

// Whether there is anything between two values of the parameter.
bool CanMix(const Ui& ui, const host::ParameterListing& parameter) {
  if (parameter.kind == kKindBool) return false;
  if (parameter.kind != kKindText) return true;
  return tool::ParseGradientStops(std::get<std::string>(ui.studio.Value(parameter))).has_value();
}

bool MenuItem(const Ui& ui, const std::string& id, const char* text, bool checked, bool enabled) {
  const bool pressed = ImGui::MenuItem(text, nullptr, checked, enabled);
  ui.marks.SetItem(id);
  return pressed;
}

void DrawWays(const Ui& ui, const std::string& id, const std::string& name) {
  struct Choice {
    tool::Way way;
    const char* text;
  };
  constexpr Choice kChoices[] = {
      {tool::Way::kLinear, "Linear"}, {tool::Way::kSmooth, "Smooth"}, {tool::Way::kHold, "Hold"}};
  const auto way = ui.studio.keys().WayAt(name, ui.studio.frame_now());
  ImGui::PushStyleColor(ImGuiCol_Text, ui.look.colours().dim);
  ImGui::TextUnformatted("To the next key");
  ImGui::PopStyleColor();
  for (const Choice& choice : kChoices) {
    if (MenuItem(ui, id + "/" + choice.text, choice.text, way == choice.way, way.has_value())) {
      ui.studio.SetWay(name, choice.way);
    }
  }
  ImGui::Separator();
}

void DrawMenu(const Ui& ui, const std::string& id, const host::ParameterListing& parameter) {
  if (!BeginRoomyPopup(ui, "menu")) return;
  ImGui::PushStyleVar(ImGuiStyleVar_ItemSpacing, {ui.look.Px(14), ui.look.Px(8)});
  if (CanMix(ui, parameter)) DrawWays(ui, id, parameter.name);
  if (MenuItem(ui, id + "/remove", "Remove all keys", false, true)) {
    ui.studio.RemoveKeys(parameter);
  }
  ImGui::PopStyleVar();
  EndRoomyPopup();
}

}  // namespace

void DrawDiamond(ImDrawList* list, ImVec2 centre, float half, ImU32 colour, bool solid, float rim) {
  const ImVec2 top{centre.x, centre.y - half};
  const ImVec2 right{centre.x + half, centre.y};
  const ImVec2 bottom{centre.x, centre.y + half};
  const ImVec2 left{centre.x - half, centre.y};
  if (solid) {
    list->AddQuadFilled(top, right, bottom, left, colour);
  } else {
    list->AddQuad(top, right, bottom, left, colour, rim);
  }
}

void KeyToggle(const Ui& ui, const host::ParameterListing& parameter) {
  const Palette& colours = ui.look.colours();
  const std::string id = "key/" + parameter.name;
  const bool moving = ui.studio.keys().Find(parameter.name) != nullptr;
  const bool here = ui.studio.keys().HasKeyAt(parameter.name, ui.studio.frame_now());
  const float side = ui.look.Px(kKeyToggle);
  const ImVec2 from = ImGui::GetCursorScreenPos();
  ImGui::PushID(id.c_str());
  if (ImGui::InvisibleButton(id.c_str(), {side, side})) ui.studio.ToggleKey(parameter);
  ui.marks.SetItem(id);
  const bool hovered = ImGui::IsItemHovered();
  Tip(ui, here     ? "Remove this key (right button: more)"
          : moving ? "Set a key here (right button: more)"
                   : "Change over time: set the first key");
  if (moving && hovered && ImGui::IsMouseClicked(1)) ImGui::OpenPopup("menu");
  DrawMenu(ui, id, parameter);
  ImGui::PopID();
  const ImU32 colour = moving ? colours.accent : hovered ? colours.text : colours.faint;
  DrawDiamond(ImGui::GetWindowDrawList(), {from.x + side / 2, from.y + side / 2},
              ui.look.Px(moving ? 5.5f : 4), colour, here, ui.look.Px(1.5f));
}

}  // namespace krv::studio
