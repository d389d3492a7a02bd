#include "studio/widgets.h"

#include <algorithm>
#include <cmath>

namespace krv::studio {
namespace {

ImVec2 operator+(ImVec2 a, ImVec2 b) { return {a.x + b.x, a.y + b.y}; }

ImVec2 MiddleOfItem() {
  const ImVec2 from = ImGui::GetItemRectMin();
  const ImVec2 to = ImGui::GetItemRectMax();
  return {(from.x + to.x) / 2, (from.y + to.y) / 2};
}

void FillItem(ImU32 colour, float rounding) {
  ImGui::GetWindowDrawList()->AddRectFilled(ImGui::GetItemRectMin(), ImGui::GetItemRectMax(),
                                            colour, rounding);
}

}  // namespace

void DrawChevron(ImDrawList* list, ImVec2 centre, float half, bool up, ImU32 colour, float width) {
  const float rise = up ? half / 2 : -half / 2;
  const ImVec2 tip{centre.x, centre.y - rise};
  list->AddLine({centre.x - half, centre.y + rise}, tip, colour, width);
  list->AddLine(tip, {centre.x + half, centre.y + rise}, colour, width);
}

void PutText(ImDrawList* list, ImFont* font, ImVec2 at, ImU32 colour, const std::string& text) {
  const ImVec2 whole{std::round(at.x), std::round(at.y)};
  list->AddText(font, font->FontSize, whole, colour, text.data(), text.data() + text.size());
}

ImVec2 SizeOf(ImFont* font, const std::string& text) {
  return font->CalcTextSizeA(font->FontSize, 1e9f, 0, text.data(), text.data() + text.size());
}

std::string Elide(ImFont* font, const std::string& text, float width) {
  if (SizeOf(font, text).x <= width) return text;
  std::string shorter = text;
  while (!shorter.empty()) {
    do {
      shorter.pop_back();
    } while (!shorter.empty() && (static_cast<unsigned char>(shorter.back()) & 0xC0) == 0xC0);
    const std::string shown = shorter + "\xE2\x80\xA6";
    if (SizeOf(font, shown).x <= width) return shown;
  }
  return {};
}

void Tip(const Ui& ui, const char* text) {
  constexpr float kPatience = 0.45f;  // seconds
  if (text == nullptr || *text == 0 || !ImGui::IsItemHovered()) return;
  if (ImGui::IsAnyMouseDown()) return;
  static ImGuiID rested_on = 0;
  static double since = 0;
  const ImGuiID id = ImGui::GetID(text);
  if (rested_on != id) {
    rested_on = id;
    since = ImGui::GetTime();
  }
  if (ImGui::GetTime() - since < static_cast<double>(kPatience)) return;
  ImGui::PushStyleVar(ImGuiStyleVar_WindowPadding, {ui.look.Px(10), ui.look.Px(7)});
  ImGui::PushFont(ui.look.fonts().small);
  ImGui::SetTooltip("%s", text);
  ImGui::PopFont();
  ImGui::PopStyleVar();
}

bool IconButton(const Ui& ui, const char* id, Icon icon, const char* tip, bool lit, float units) {
  const Palette& colours = ui.look.colours();
  const float side = ui.look.Px(units);
  const bool pressed = ImGui::InvisibleButton(id, {side, side});
  ui.marks.SetItem(id);
  const bool hovered = ImGui::IsItemHovered();
  if (hovered || lit) FillItem(lit ? colours.accent_soft : colours.hovered, ui.look.Px(7));
  const ImU32 colour = lit ? colours.accent : hovered ? colours.text : colours.dim;
  DrawIcon(ImGui::GetWindowDrawList(), icon, MiddleOfItem(), side / 2, colour);
  Tip(ui, tip);
  return pressed;
}

bool TextButton(const Ui& ui, const char* id, const char* text, ButtonKind kind, bool enabled) {
  const Palette& colours = ui.look.colours();
  ImFont* font = ui.look.fonts().strong;
  const ImVec2 extent = SizeOf(font, text);
  ImGui::BeginDisabled(!enabled);
  const bool pressed = ImGui::InvisibleButton(id, {extent.x + 2 * ui.look.Px(14), ui.look.Px(34)});
  ImGui::EndDisabled();
  ui.marks.SetItem(id);
  const bool primary = kind == ButtonKind::kPrimary;
  ImU32 fill = primary ? colours.accent : colours.raised;
  ImU32 ink = primary ? colours.on_accent : colours.text;
  if (enabled && ImGui::IsItemHovered()) {
    fill = primary ? WithAlpha(colours.accent, 0.85f) : colours.hovered;
  }
  if (!enabled) {
    fill = WithAlpha(colours.raised, 0.5f);
    ink = colours.faint;
  }
  FillItem(fill, ui.look.Px(7));
  const ImVec2 middle = MiddleOfItem();
  PutText(ImGui::GetWindowDrawList(), font, {middle.x - extent.x / 2, middle.y - extent.y / 2}, ink,
          text);
  return pressed;
}

bool Toggle(const Ui& ui, const char* id, bool* on) {
  const Palette& colours = ui.look.colours();
  const ImVec2 size{ui.look.Px(34), ui.look.Px(20)};
  const bool pressed = ImGui::InvisibleButton(id, size);
  ui.marks.SetItem(id);
  if (pressed) *on = !*on;
  const bool hovered = ImGui::IsItemHovered();
  FillItem(*on ? colours.accent : hovered ? colours.faint : colours.hovered, size.y / 2);
  const float radius = size.y / 2 - ui.look.Px(3);
  const ImVec2 from = ImGui::GetItemRectMin();
  const float x = *on ? size.x - size.y / 2 : size.y / 2;
  ImGui::GetWindowDrawList()->AddCircleFilled({from.x + x, from.y + size.y / 2}, radius,
                                              *on ? colours.on_accent : colours.panel, 24);
  return pressed;
}

bool Segments(const Ui& ui, const char* id, const std::vector<std::string>& texts, int* chosen,
              float width) {
  const Palette& colours = ui.look.colours();
  ImFont* font = ui.look.fonts().small;
  ImDrawList* list = ImGui::GetWindowDrawList();
  const float height = ui.look.Px(24);
  const float part = width / static_cast<float>(texts.size());
  const ImVec2 start = ImGui::GetCursorScreenPos();
  list->AddRectFilled(start, start + ImVec2{width, height}, colours.raised, ui.look.Px(6));
  bool changed = false;
  ImGui::PushStyleVar(ImGuiStyleVar_ItemSpacing, {0, 0});
  for (size_t i = 0; i < texts.size(); ++i) {
    if (i > 0) ImGui::SameLine();
    const std::string name = id + ("/" + std::to_string(i));
    const bool is_chosen = static_cast<int>(i) == *chosen;
    if (ImGui::InvisibleButton(name.c_str(), {part, height}) && !is_chosen) {
      *chosen = static_cast<int>(i);
      changed = true;
    }
    ui.marks.SetItem(name);
    const bool hovered = ImGui::IsItemHovered();
    if (is_chosen) FillItem(colours.accent_soft, ui.look.Px(6));
    const ImVec2 extent = SizeOf(font, texts[i]);
    const ImVec2 middle = MiddleOfItem();
    PutText(list, font, {middle.x - extent.x / 2, middle.y - extent.y / 2},
            is_chosen ? colours.accent
            : hovered ? colours.text
                      : colours.dim,
            texts[i]);
  }
  ImGui::PopStyleVar();
  return changed;
}

bool DropDown(const Ui& ui, const char* id, const char* tip, const std::vector<std::string>& texts,
              int* chosen, float width) {
  ImGui::PushFont(ui.look.fonts().small);
  ImGui::PushStyleVar(ImGuiStyleVar_FramePadding,
                      {ui.look.Px(8), (ui.look.Px(24) - ui.look.fonts().small->FontSize) / 2});
  ImGui::PushStyleVar(ImGuiStyleVar_WindowPadding, {ui.look.Px(8), ui.look.Px(8)});
  ImGui::SetNextItemWidth(width);
  bool changed = false;
  const std::string label = std::string("##") + id;
  const bool open = ImGui::BeginCombo(label.c_str(), texts[static_cast<size_t>(*chosen)].c_str(),
                                      ImGuiComboFlags_NoArrowButton);
  ImGui::PopStyleVar(2);
  if (open) {
    for (size_t i = 0; i < texts.size(); ++i) {
      const bool is_chosen = static_cast<int>(i) == *chosen;
      if (ImGui::Selectable(texts[i].c_str(), is_chosen) && !is_chosen) {
        *chosen = static_cast<int>(i);
        changed = true;
      }
      ui.marks.SetItem(id + ("/" + std::to_string(i)));
    }
    ImGui::EndCombo();
  } else {
    ui.marks.SetItem(id);
    Tip(ui, tip);
    const ImVec2 end = ImGui::GetItemRectMax();
    DrawChevron(ImGui::GetWindowDrawList(), {end.x - ui.look.Px(13), MiddleOfItem().y},
                ui.look.Px(3.5f), false, ui.look.colours().dim, ui.look.Px(1.5f));
  }
  ImGui::PopFont();
  return changed;
}

bool Slider(const Ui& ui, const char* id, float width, double* value, double minimum,
            double maximum, double usual) {
  const Palette& colours = ui.look.colours();
  ImDrawList* list = ImGui::GetWindowDrawList();
  const float height = ui.look.Px(24);
  const float radius = ui.look.Px(6);
  ImGui::InvisibleButton(id, {width, height});
  ui.marks.SetItem(id);
  const ImVec2 from = ImGui::GetItemRectMin();
  const float left = from.x + radius;
  const float length = width - 2 * radius;
  const float y = from.y + height / 2;
  const double span = maximum - minimum;
  bool changed = false;
  if (ImGui::IsItemHovered() && ImGui::IsMouseDoubleClicked(0)) {
    *value = usual;
    changed = true;
  } else if (ImGui::IsItemActive() &&
             (ImGui::IsItemActivated() || ImGui::IsMouseDragging(0, 0.5f))) {
    const double share =
        std::clamp(static_cast<double>((ImGui::GetIO().MousePos.x - left) / length), 0.0, 1.0);
    changed = *value != minimum + share * span;
    *value = minimum + share * span;
  }
  const auto place = [=](double number) {
    return left + length * static_cast<float>(std::clamp((number - minimum) / span, 0.0, 1.0));
  };
  const float thick = ui.look.Px(4);
  const bool lit = ImGui::IsItemHovered() || ImGui::IsItemActive();
  list->AddRectFilled({left, y - thick / 2}, {left + length, y + thick / 2},
                      lit ? colours.hovered : colours.raised, thick / 2);
  // From where zero is, when it lies within.
  const double origin = minimum < 0 && maximum > 0 ? 0 : minimum;
  const float a = std::min(place(origin), place(*value));
  const float b = std::max(place(origin), place(*value));
  list->AddRectFilled({a, y - thick / 2}, {b, y + thick / 2}, colours.accent, thick / 2);
  const float mark = place(usual);
  list->AddLine({mark, y + thick}, {mark, y + thick + ui.look.Px(3)}, colours.faint, ui.look.Px(1));
  list->AddCircleFilled({place(*value), y}, lit ? radius : radius - ui.look.Px(1), colours.accent,
                        24);
  list->AddCircleFilled({place(*value), y}, radius - ui.look.Px(3), colours.panel, 24);
  return changed;
}

bool ColourField(const Ui& ui, const char* id, int* rgb, ImVec2 size) {
  const Palette& colours = ui.look.colours();
  const std::string popup = std::string(id) + "/popup";
  if (ImGui::InvisibleButton(id, size)) ImGui::OpenPopup(popup.c_str());
  ui.marks.SetItem(id);
  FillItem(OpaqueColour(static_cast<unsigned>(*rgb)), ui.look.Px(5));
  ImGui::GetWindowDrawList()->AddRect(ImGui::GetItemRectMin(), ImGui::GetItemRectMax(),
                                      ImGui::IsItemHovered() ? colours.dim : colours.line,
                                      ui.look.Px(5));
  bool changed = false;
  if (BeginRoomyPopup(ui, popup.c_str())) {
    float parts[3];
    for (int i = 0; i < 3; ++i) {
      parts[i] = static_cast<float>((*rgb >> (16 - 8 * i)) & 255) / 255.0f;
    }
    ImGui::SetNextItemWidth(ui.look.Px(220));
    changed =
        ImGui::ColorPicker3("##picker", parts,
                            ImGuiColorEditFlags_NoSidePreview | ImGuiColorEditFlags_NoLabel |
                                ImGuiColorEditFlags_DisplayHex | ImGuiColorEditFlags_PickerHueBar);
    ui.marks.SetItem(std::string(id) + "/picker");
    if (changed) {
      *rgb = 0;
      for (const float part : parts) {
        *rgb = *rgb * 256 + static_cast<int>(std::lround(std::clamp(part, 0.0f, 1.0f) * 255));
      }
    }
    EndRoomyPopup();
  }
  return changed;
}

bool BeginRoomyPopup(const Ui& ui, const char* id) {
  ImGui::PushStyleVar(ImGuiStyleVar_WindowPadding, {ui.look.Px(12), ui.look.Px(12)});
  const bool open = ImGui::BeginPopup(id);
  ImGui::PopStyleVar();
  return open;
}

void EndRoomyPopup() { ImGui::EndPopup(); }

}  // namespace krv::studio
