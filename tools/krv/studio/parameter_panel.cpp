#include "studio/parameter_panel.h"

#include <imgui_stdlib.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "gradient_text.h"
#include "parameter_text.h"
#include "studio/key_toggle.h"
#include "studio/widgets.h"

namespace krv::studio {
namespace {

using host::ParameterListing;

constexpr float kPadding = 18;
constexpr float kRow = 30;
constexpr float kLabelShare = 0.4f;
constexpr float kReset = 22;
constexpr float kValue = 62;
constexpr int kFewChoices = 6;

std::string IdOf(const ParameterListing& parameter) { return "param/" + parameter.name; }

int DecimalsFor(const ParameterListing& parameter) {
  const double span = parameter.maximum - parameter.minimum;
  return span > 40 ? 1 : span > 4 ? 2 : 3;
}

double Rounded(double value, int decimals) {
  const double unit = std::pow(10, decimals);
  return std::round(value * unit) / unit;
}

// So many that the value is shown in full, within reason.
int DecimalsToShow(double value, int least) {
  constexpr int kMost = 4;
  while (least < kMost && std::abs(Rounded(value, least) - value) > 1e-6) ++least;
  return least;
}

double NumberOf(const host::HostValue& value) {
  if (const auto* integer = std::get_if<int32_t>(&value)) return *integer;
  if (const auto* number = std::get_if<float>(&value)) return tool::ShortestDouble(*number);
  return 0;
}

bool IsFewChoices(const ParameterListing& parameter) {
  return parameter.kind == kKindInt && parameter.HasRange() &&
         parameter.maximum - parameter.minimum < kFewChoices;
}

std::string TipFor(const ParameterListing& parameter) {
  std::string tip = parameter.name + ", " + host::ParameterKindName(parameter.kind);
  if (parameter.HasRange() && parameter.kind != kKindColor) {
    tip += " from " + tool::NumberText(parameter.kind, parameter.minimum) + " to " +
           tool::NumberText(parameter.kind, parameter.maximum);
  }
  if (parameter.kind == kKindInt || parameter.kind == kKindFloat) {
    tip += "; default " + tool::NumberText(parameter.kind, parameter.default_number);
  }
  return tip;
}

}  // namespace

void ParameterPanel::DrawLabel(const Ui& ui, const ParameterListing& parameter, float width) {
  const Palette& colours = ui.look.colours();
  ImFont* font = ui.look.fonts().small;
  const bool moving = ui.studio.keys().Find(parameter.name) != nullptr;
  const bool changed = moving || ui.studio.sheet().IsChanged(parameter.name);
  const bool chosen = ui.studio.chosen() == parameter.name;
  const ImVec2 start = ImGui::GetCursorScreenPos();
  const std::string id = "label/" + parameter.name;
  if (ImGui::InvisibleButton(id.c_str(), {width, ui.look.Px(24)})) {
    ui.studio.Choose(parameter.name);
  }
  ui.marks.SetItem(id);
  std::string tip = TipFor(parameter);
  if (moving) tip += chosen ? "\nClick to see all keys" : "\nClick to see its keys alone";
  Tip(ui, tip.c_str());
  const std::string name = Elide(font, ReadableName(parameter.name), width - ui.look.Px(8));
  PutText(ImGui::GetWindowDrawList(), font,
          {start.x, start.y + (ui.look.Px(24) - font->FontSize) / 2},
          chosen    ? colours.accent
          : changed ? colours.text
                    : colours.dim,
          name);
}

void ParameterPanel::DrawButtons(const Ui& ui, const ParameterListing& parameter, ImVec2 at) {
  ImGui::SetCursorScreenPos(at);
  KeyToggle(ui, parameter);
  if (ui.studio.Value(parameter) == DefaultOf(parameter)) return;
  ImGui::SetCursorScreenPos({at.x + ui.look.Px(kKeyToggle), at.y});
  const std::string id = "reset/" + parameter.name;
  if (IconButton(ui, id.c_str(), Icon::kReset, "Back to the default", false, 24)) {
    ui.studio.Reset(parameter);
  }
}

void ParameterPanel::DrawNumber(const Ui& ui, const ParameterListing& parameter, float width) {
  const std::string id = IdOf(parameter);
  const host::HostValue value = ui.studio.Value(parameter);
  const bool whole = parameter.kind == kKindInt;
  if (IsFewChoices(parameter)) {
    std::vector<std::string> texts;
    const int first = static_cast<int>(parameter.minimum);
    for (int i = first; i <= static_cast<int>(parameter.maximum); ++i) {
      texts.push_back(std::to_string(i));
    }
    int chosen = std::get<int32_t>(value) - first;
    if (Segments(ui, id.c_str(), texts, &chosen, width)) {
      ui.studio.SetValue(parameter, int32_t{first + chosen});
    }
    return;
  }
  const int decimals = whole ? 0 : DecimalsFor(parameter);
  double number = NumberOf(value);
  bool changed = false;
  float field = width;
  if (parameter.HasRange()) {
    field = ui.look.Px(kValue);
    double slid = number;
    if (Slider(ui, id.c_str(), width - field - ui.look.Px(8), &slid, parameter.minimum,
               parameter.maximum, parameter.default_number)) {
      number = slid == parameter.default_number ? slid : Rounded(slid, decimals);
      changed = true;
    }
    ImGui::SameLine(0, ui.look.Px(8));
  }
  ImGui::PushFont(ui.look.fonts().small);
  ImGui::PushStyleVar(ImGuiStyleVar_FramePadding,
                      {ui.look.Px(8), (ui.look.Px(24) - ui.look.fonts().small->FontSize) / 2});
  ImGui::SetNextItemWidth(field);
  if (whole) {
    int integer = static_cast<int>(number);
    changed = ImGui::InputInt("##value", &integer, 0) || changed;
    if (ImGui::IsItemActive()) number = integer;
  } else {
    char format[8];
    const bool between = ui.studio.keys().Find(parameter.name) != nullptr &&
                         !ui.studio.keys().HasKeyAt(parameter.name, ui.studio.frame_now());
    std::snprintf(format, sizeof format, "%%.%df",
                  between ? decimals : DecimalsToShow(number, decimals));
    changed = ImGui::InputDouble("##value", &number, 0, 0, format) || changed;
  }
  ui.marks.SetItem(id + "/value");
  ImGui::PopStyleVar();
  ImGui::PopFont();
  if (!changed) return;
  if (whole) {
    ui.studio.SetValue(parameter, static_cast<int32_t>(std::lround(number)));
  } else {
    ui.studio.SetValue(parameter, static_cast<float>(number));
  }
}

void ParameterPanel::DrawColour(const Ui& ui, const ParameterListing& parameter, float width) {
  int rgb = std::get<int32_t>(ui.studio.Value(parameter)) & 0xFFFFFF;
  const ImVec2 size{ui.look.Px(56), ui.look.Px(24)};
  if (ColourField(ui, IdOf(parameter).c_str(), &rgb, size)) {
    ui.studio.SetValue(parameter, int32_t{rgb});
  }
  ImGui::SameLine(0, ui.look.Px(8));
  std::string text = tool::NumberText(kKindColor, rgb);
  ImGui::PushFont(ui.look.fonts().small);
  ImGui::PushStyleVar(ImGuiStyleVar_FramePadding,
                      {ui.look.Px(8), (ui.look.Px(24) - ui.look.fonts().small->FontSize) / 2});
  ImGui::SetNextItemWidth(width - size.x - ui.look.Px(8));
  if (ImGui::InputText("##hex", &text)) {
    std::string ignored;
    const auto typed = host::ParseParameterValue(parameter, text, &ignored);
    if (typed) ui.studio.SetValue(parameter, *typed);
  }
  ui.marks.SetItem(IdOf(parameter) + "/hex");
  ImGui::PopStyleVar();
  ImGui::PopFont();
}

void ParameterPanel::DrawText(const Ui& ui, const ParameterListing& parameter, float width) {
  std::string text = std::get<std::string>(ui.studio.Value(parameter));
  if (auto gradient = Gradient::Parse(text)) {
    if (gradients_.Draw(ui, IdOf(parameter), width, &*gradient)) {
      ui.studio.SetValue(parameter, gradient->ToText());
    }
    return;
  }
  ImGui::SetNextItemWidth(width);
  // What is typed half, or is no gradient, would make frames fail and its file unreadable.
  if (ImGui::InputText("##text", &text) && host::IsOfUse(parameter, text)) {
    ui.studio.SetValue(parameter, text);
  }
  ui.marks.SetItem(IdOf(parameter));
}

void ParameterPanel::DrawRow(const Ui& ui, const ParameterListing& parameter, float width) {
  ImGui::PushID(parameter.name.c_str());
  const float left = ImGui::GetCursorPosX();
  const float label = std::round(width * kLabelShare);
  const float buttons = ui.look.Px(kReset) + ui.look.Px(kKeyToggle);
  const float control = width - label - buttons;
  const ImVec2 start = ImGui::GetCursorScreenPos();
  const ImVec2 end{start.x + width - buttons, start.y};
  const bool wide = parameter.kind == kKindText;
  DrawLabel(ui, parameter, label);
  if (wide) {
    DrawButtons(ui, parameter, end);
    ImGui::SetCursorScreenPos({start.x, start.y + ui.look.Px(26)});
    DrawText(ui, parameter, width - buttons);
    ImGui::Dummy({0, ui.look.Px(2)});
  } else {
    ImGui::SameLine(left + label);
    if (parameter.kind == kKindBool) {
      bool on = std::get<bool>(ui.studio.Value(parameter));
      ImGui::SetCursorPosY(ImGui::GetCursorPosY() + ui.look.Px(2));
      if (Toggle(ui, IdOf(parameter).c_str(), &on)) ui.studio.SetValue(parameter, on);
    } else if (parameter.kind == kKindColor) {
      DrawColour(ui, parameter, control);
    } else {
      DrawNumber(ui, parameter, control);
    }
    DrawButtons(ui, parameter, end);
    ImGui::SetCursorScreenPos({start.x, start.y + ui.look.Px(kRow)});
  }
  ImGui::PopID();
}

void ParameterPanel::DrawGroup(const Ui& ui, const ParameterGroup& group) {
  const Palette& colours = ui.look.colours();
  ImFont* font = ui.look.fonts().strong;
  const float left = ImGui::GetCursorPosX();
  const float width = ImGui::GetContentRegionAvail().x - ui.look.Px(kPadding);
  const ImVec2 start = ImGui::GetCursorScreenPos();
  const bool folded = folded_.count(group.title) > 0;
  if (ImGui::InvisibleButton(("group/" + group.title).c_str(), {width, ui.look.Px(32)})) {
    if (folded) {
      folded_.erase(group.title);
    } else {
      folded_.insert(group.title);
    }
  }
  ui.marks.SetItem("group/" + group.title);
  const bool hovered = ImGui::IsItemHovered();
  ImDrawList* list = ImGui::GetWindowDrawList();
  PutText(list, font, {start.x, start.y + ui.look.Px(7)}, colours.text, group.title);
  DrawChevron(list, {start.x + width - ui.look.Px(10), start.y + ui.look.Px(16)}, ui.look.Px(4),
              !folded, hovered ? colours.text : colours.dim, ui.look.Px(1.5f));
  if (!folded) {
    for (const size_t index : group.parameters) {
      ImGui::SetCursorPosX(left);
      DrawRow(ui, ui.studio.sheet().effect().parameters[index], width);
    }
  }
  const ImVec2 end = ImGui::GetCursorScreenPos();
  list->AddLine({start.x, end.y + ui.look.Px(5)}, {start.x + width, end.y + ui.look.Px(5)},
                colours.line, 1);
  ImGui::Dummy({0, ui.look.Px(6)});
}

void ParameterPanel::DrawHeading(const Ui& ui) {
  const Palette& colours = ui.look.colours();
  const size_t changed = ui.studio.sheet().changed().size();
  const ImVec2 start = ImGui::GetCursorScreenPos();
  const float width = ImGui::GetContentRegionAvail().x;
  const float pad = ui.look.Px(kPadding);
  PutText(ImGui::GetWindowDrawList(), ui.look.fonts().title,
          {start.x + pad, start.y + ui.look.Px(15)}, colours.text, "Parameters");
  if (changed > 0) {
    const std::string text = "Reset " + std::to_string(changed);
    const float button = SizeOf(ui.look.fonts().strong, text).x + 2 * ui.look.Px(14);
    // Up to where the groups below end, beside their scroll bar.
    const float right = start.x + width - pad - ImGui::GetStyle().ScrollbarSize;
    ImGui::SetCursorScreenPos({right - button, start.y + ui.look.Px(10)});
    if (TextButton(ui, "reset_all", text.c_str(), ButtonKind::kPlain)) ui.studio.ResetAll();
  }
  ImGui::SetCursorScreenPos({start.x, start.y + ui.look.Px(52)});
}

void ParameterPanel::Draw(const Ui& ui) {
  const Palette& colours = ui.look.colours();
  DrawHeading(ui);
  if (!folded_hidden_ && !ui.studio.groups().empty()) {
    folded_.insert("Hidden in hosts");
    folded_hidden_ = true;
  }
  ImGui::BeginChild("parameters", {0, 0}, false, ImGuiWindowFlags_NoNav);
  ImGui::PushStyleVar(ImGuiStyleVar_ItemSpacing, {ui.look.Px(8), ui.look.Px(2)});
  const float pad = ui.look.Px(kPadding);
  if (ui.studio.groups().empty()) {
    const ImVec2 at = ImGui::GetCursorScreenPos();
    PutText(ImGui::GetWindowDrawList(), ui.look.fonts().small, {at.x + pad, at.y}, colours.dim,
            ui.studio.package().ready ? "The package declares none." : "No version works yet.");
  }
  for (const ParameterGroup& group : ui.studio.groups()) {
    ImGui::SetCursorPosX(pad);
    DrawGroup(ui, group);
  }
  ImGui::Dummy({0, ui.look.Px(12)});
  ImGui::PopStyleVar();
  ImGui::EndChild();
}

}  // namespace krv::studio
