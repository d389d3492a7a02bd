#include "studio/dialog.h"

#include <imgui_stdlib.h>

#include <algorithm>

#include "studio/widgets.h"

namespace krv::studio {
namespace {

constexpr float kWidth = 520;
constexpr float kPad = 24;

}  // namespace

void BeginDialog(const Ui& ui, const char* id, const char* heading) {
  const Palette& colours = ui.look.colours();
  const ImVec2 screen = ImGui::GetIO().DisplaySize;
  ImGui::SetNextWindowPos({0, 0});
  ImGui::SetNextWindowSize(screen);
  ImGui::PushStyleColor(ImGuiCol_WindowBg, WithAlpha(colours.background, 0.72f));
  ImGui::Begin("shade", nullptr,
               ImGuiWindowFlags_NoDecoration | ImGuiWindowFlags_NoMove |
                   ImGuiWindowFlags_NoSavedSettings | ImGuiWindowFlags_NoNav |
                   ImGuiWindowFlags_NoInputs);
  ImGui::End();
  ImGui::PopStyleColor();

  const float width = std::min(ui.look.Px(kWidth), screen.x - ui.look.Px(40));
  ImGui::SetNextWindowPos({screen.x / 2, screen.y * 0.42f}, 0, {0.5f, 0.5f});
  ImGui::SetNextWindowSize({width, 0});
  ImGui::PushStyleVar(ImGuiStyleVar_WindowPadding, {ui.look.Px(kPad), ui.look.Px(kPad)});
  ImGui::PushStyleVar(ImGuiStyleVar_WindowRounding, ui.look.Px(12));
  ImGui::PushStyleVar(ImGuiStyleVar_WindowBorderSize, 1);
  ImGui::PushStyleColor(ImGuiCol_WindowBg, colours.panel);
  ImGui::Begin(id, nullptr,
               ImGuiWindowFlags_NoDecoration | ImGuiWindowFlags_NoMove |
                   ImGuiWindowFlags_NoSavedSettings | ImGuiWindowFlags_AlwaysAutoResize);
  ImGui::PushFont(ui.look.fonts().title);
  ImGui::TextUnformatted(heading);
  ImGui::PopFont();
  ImGui::Dummy({0, ui.look.Px(4)});
}

void EndDialog() {
  ImGui::End();
  ImGui::PopStyleColor();
  ImGui::PopStyleVar(3);
}

void Caption(const Ui& ui, const std::string& text) {
  ImGui::PushFont(ui.look.fonts().small);
  ImGui::PushStyleColor(ImGuiCol_Text, ui.look.colours().dim);
  ImGui::TextUnformatted(text.c_str());
  ImGui::PopStyleColor();
  ImGui::PopFont();
}

void Wrapped(const std::string& text, ImU32 colour) {
  ImGui::PushStyleColor(ImGuiCol_Text, colour);
  ImGui::PushTextWrapPos(0);
  ImGui::TextUnformatted(text.c_str());
  ImGui::PopTextWrapPos();
  ImGui::PopStyleColor();
}

bool FileField(const Ui& ui, const char* id, std::string* name) {
  Caption(ui, "File");
  ImGui::SetNextItemWidth(-1);
  const bool entered = ImGui::InputText((std::string("##") + id).c_str(), name,
                                        ImGuiInputTextFlags_EnterReturnsTrue);
  ui.marks.SetItem(id);
  return entered;
}

void FileRemark(const Ui& ui, const std::string& problem, Replaces replaces, const char* hint) {
  const Palette& colours = ui.look.colours();
  if (!problem.empty()) {
    Wrapped(problem, colours.error);
  } else if (replaces == Replaces::kFile) {
    Wrapped("There is a file of this name.", colours.warning);
  } else if (replaces == Replaces::kFiles) {
    Wrapped("There are files of these names.", colours.warning);
  } else {
    Caption(ui, hint);
  }
}

bool WriteButton(const Ui& ui, const char* id, const char* text, Replaces replaces, bool entered,
                 bool enabled) {
  if (replaces == Replaces::kFile) text = "Replace it";
  if (replaces == Replaces::kFiles) text = "Replace them";
  const bool pressed = TextButton(ui, id, text, ButtonKind::kPrimary, enabled);
  return enabled && (pressed || (entered && replaces == Replaces::kNothing));
}

}  // namespace krv::studio
