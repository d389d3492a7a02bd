#include "studio/problem_panel.h"

#include <algorithm>
#include <string>
#include <vector>

#include "studio/widgets.h"
#include "utf8_path.h"

namespace krv::studio {
namespace {

constexpr float kHeading = 34;
constexpr float kLine = 22;
constexpr size_t kMostLines = 6;

struct Line {
  std::string place;
  std::string text;
  bool is_error;
};

// "shaders/glow.frag:12", the file as the package names it.
std::string PlaceOf(const Studio& studio, const tool::Finding& finding) {
  const std::string folder = host::Utf8(studio.package_folder() / "");
  std::string place = finding.file;
  if (place.starts_with(folder)) place = place.substr(folder.size());
  if (finding.line > 0) place += ":" + std::to_string(finding.line);
  return place;
}

std::vector<Line> Lines(const Studio& studio) {
  std::vector<Line> lines;
  if (!studio.failure().empty()) lines.push_back({"", studio.failure(), true});
  for (const tool::Finding& finding : studio.package().findings) {
    std::string text = finding.message;
    if (!finding.pointer.empty()) text = finding.pointer + ": " + text;
    lines.push_back(
        {PlaceOf(studio, finding), std::move(text), finding.severity == tool::Severity::kError});
  }
  if (lines.empty() && !studio.frame().problem.empty()) {
    lines.push_back({"", studio.frame().problem, false});
  }
  return lines;
}

std::string Heading(const Studio& studio, const std::vector<Line>& lines) {
  const auto errors =
      std::count_if(lines.begin(), lines.end(), [](const Line& line) { return line.is_error; });
  if (errors == 0)
    return lines.size() == 1 ? "One remark" : std::to_string(lines.size()) + " remarks";
  std::string text = errors == 1 ? "One error" : std::to_string(errors) + " errors";
  return text + (studio.package().ready ? ": the picture shows the last version that works"
                                        : ": no version of the package works yet");
}

}  // namespace

float ProblemHeight(const Ui& ui) {
  const size_t lines = Lines(ui.studio).size();
  if (lines == 0) return 0;
  return ui.look.Px(kHeading) +
         ui.look.Px(kLine) * static_cast<float>(std::min(lines, kMostLines)) + ui.look.Px(22);
}

void DrawProblems(const Ui& ui) {
  const Palette& colours = ui.look.colours();
  const std::vector<Line> lines = Lines(ui.studio);
  const bool wrong =
      std::any_of(lines.begin(), lines.end(), [](const Line& line) { return line.is_error; });
  const float pad = ui.look.Px(18);
  ImDrawList* list = ImGui::GetWindowDrawList();
  const ImVec2 start = ImGui::GetCursorScreenPos();
  const ImVec2 room = ImGui::GetContentRegionAvail();
  const ImVec2 from{start.x + pad, start.y + ui.look.Px(4)};
  const ImVec2 to{start.x + room.x - pad, start.y + room.y - ui.look.Px(8)};
  const ImU32 ink = wrong ? colours.error : colours.warning;
  list->AddRectFilled(from, to, wrong ? colours.error_soft : colours.raised, ui.look.Px(8));
  list->AddRectFilled(from, {from.x + ui.look.Px(4), to.y}, ink, ui.look.Px(8),
                      ImDrawFlags_RoundCornersLeft);
  const float left = from.x + ui.look.Px(18);
  PutText(list, ui.look.fonts().strong, {left, from.y + ui.look.Px(9)}, ink,
          Heading(ui.studio, lines));
  float place_width = 0;
  for (const Line& line : lines) {
    place_width = std::max(place_width, SizeOf(ui.look.fonts().strong, line.place).x);
  }
  if (place_width > 0) place_width += ui.look.Px(16);
  ImGui::SetCursorScreenPos({left, from.y + ui.look.Px(kHeading)});
  ImGui::BeginChild("problems",
                    {to.x - left - ui.look.Px(8), to.y - from.y - ui.look.Px(kHeading)});
  for (size_t i = 0; i < lines.size(); ++i) {
    const Line& line = lines[i];
    const ImVec2 at = ImGui::GetCursorScreenPos();
    PutText(ImGui::GetWindowDrawList(), ui.look.fonts().strong, at, colours.text, line.place);
    const float width = ImGui::GetContentRegionAvail().x - place_width;
    PutText(ImGui::GetWindowDrawList(), ui.look.fonts().text, {at.x + place_width, at.y},
            colours.text, Elide(ui.look.fonts().text, line.text, width));
    ImGui::InvisibleButton(("problem/" + std::to_string(i)).c_str(),
                           {ImGui::GetContentRegionAvail().x, ui.look.Px(kLine)});
    ui.marks.SetItem("problem/" + std::to_string(i));
    Tip(ui, line.text.c_str());
    ImGui::SetCursorScreenPos({at.x, at.y + ui.look.Px(kLine)});
  }
  ImGui::EndChild();
}

}  // namespace krv::studio
