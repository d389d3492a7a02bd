#include "studio/meter_panel.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include "studio/widgets.h"

namespace krv::studio {
namespace {

// Where a plot's caption stands, and the plot below it.
struct Plot {
  ImVec2 from;
  ImVec2 to;

  float Width() const { return to.x - from.x; }
  float Height() const { return to.y - from.y; }
};

Plot BeginPlot(const Ui& ui, ImVec2 from, float width, float bottom, const char* caption,
               const std::string& value) {
  const Palette& colours = ui.look.colours();
  ImDrawList* list = ImGui::GetWindowDrawList();
  ImFont* font = ui.look.fonts().small;
  PutText(list, font, from, colours.dim, caption);
  const ImVec2 extent = SizeOf(font, value);
  PutText(list, font, {from.x + width - extent.x, from.y}, colours.text, value);
  const Plot plot{{from.x, from.y + ui.look.Px(22)}, {from.x + width, bottom}};
  list->AddRectFilled(plot.from, plot.to, colours.raised, ui.look.Px(5));
  return plot;
}

// Low frequencies, where music is, get most of the width; bytes below the quietest music none.
void DrawSpectrum(const Ui& ui, const Plot& plot) {
  constexpr float kQuiet = 0.2f;
  constexpr int kBars = 32;
  const SoundReading& sound = ui.studio.frame().sound;
  ImDrawList* list = ImGui::GetWindowDrawList();
  const float inset = ui.look.Px(4);
  const float step = (plot.Width() - 2 * inset) / kBars;
  for (int bar = 0; bar < kBars; ++bar) {
    const auto edge = [](int i) {
      const float share = static_cast<float>(i) / kBars;
      return static_cast<size_t>(share * share * (SoundReading::kBands - 1));
    };
    const size_t first = edge(bar);
    const size_t last = std::max(first, edge(bar + 1) > 0 ? edge(bar + 1) - 1 : 0);
    const float most = *std::max_element(sound.spectrum.begin() + static_cast<ptrdiff_t>(first),
                                         sound.spectrum.begin() + static_cast<ptrdiff_t>(last) + 1);
    const float height = std::max(0.0f, (most - kQuiet) / (1 - kQuiet));
    const float x = plot.from.x + inset + step * static_cast<float>(bar);
    const float bottom = plot.to.y - inset;
    const float top = bottom - std::max(ui.look.Px(1), height * (plot.Height() - 2 * inset));
    list->AddRectFilled({x, top}, {x + step - ui.look.Px(1), bottom}, ui.look.colours().accent);
  }
}

void DrawLevel(const Ui& ui, const Plot& plot) {
  constexpr float kLow = 50;
  constexpr float kHigh = 110;
  const float level =
      std::clamp((ui.studio.frame().sound.level - kLow) / (kHigh - kLow), 0.0f, 1.0f);
  constexpr int kSteps = 12;
  const float inset = ui.look.Px(4);
  const float step = (plot.Height() - 2 * inset) / kSteps;
  const auto lit = static_cast<int>(std::lround(level * kSteps));
  for (int i = 0; i < kSteps; ++i) {
    const float bottom = plot.to.y - inset - step * static_cast<float>(i);
    ImGui::GetWindowDrawList()->AddRectFilled(
        {plot.from.x + inset, bottom - step + ui.look.Px(1)}, {plot.to.x - inset, bottom},
        i < lit ? ui.look.colours().accent : ui.look.colours().hovered, ui.look.Px(1));
  }
}

void DrawTimes(const Ui& ui, const Plot& plot) {
  const Palette& colours = ui.look.colours();
  ImDrawList* list = ImGui::GetWindowDrawList();
  const auto budget = static_cast<float>(1000 / ui.studio.clip().video().rate.PerSecond());
  const float scale = 1.5f * budget;
  const float inset = ui.look.Px(4);
  const float step = (plot.Width() - 2 * inset) / static_cast<float>(TimeHistory::kLength);
  const float bottom = plot.to.y - inset;
  const auto height = [=](float time) {
    return std::min(1.0f, time / scale) * (plot.Height() - 2 * inset);
  };
  for (size_t i = 0; i < TimeHistory::kLength; ++i) {
    const float time = ui.studio.times().At(i);
    if (time <= 0) continue;
    const float x = plot.from.x + inset + step * static_cast<float>(i);
    list->AddRectFilled({x, bottom - std::max(1.0f, height(time))}, {x + step, bottom},
                        time > budget ? colours.warning : colours.accent);
  }
  const float limit = bottom - height(budget);
  list->AddLine({plot.from.x + inset, limit}, {plot.to.x - inset, limit}, colours.faint, 1);
}

}  // namespace

void DrawMeters(const Ui& ui) {
  const float pad = ui.look.Px(18);
  const float gap = ui.look.Px(14);
  const ImVec2 start = ImGui::GetCursorScreenPos();
  const ImVec2 room = ImGui::GetContentRegionAvail();
  const float bottom = start.y + room.y - pad;
  const float level_width = ui.look.Px(72);
  const float wide = (room.x - 2 * pad - 2 * gap - level_width) / 2;
  const float y = start.y + ui.look.Px(12);
  float x = start.x + pad;
  char text[32];
  DrawSpectrum(ui, BeginPlot(ui, {x, y}, wide, bottom, "Spectrum", ""));
  x += wide + gap;
  std::snprintf(text, sizeof text, "%.0f dB", static_cast<double>(ui.studio.frame().sound.level));
  DrawLevel(ui, BeginPlot(ui, {x, y}, level_width, bottom, "Level", text));
  x += level_width + gap;
  const auto time = static_cast<double>(ui.studio.times().Median());
  std::snprintf(text, sizeof text, time > 0 ? "%.1f ms" : "", time);
  DrawTimes(ui, BeginPlot(ui, {x, y}, wide, bottom, "Frame", text));
  ImGui::SetCursorScreenPos({start.x + pad, y});
  ImGui::InvisibleButton("meters", {room.x - 2 * pad, bottom - y});
  ui.marks.SetItem("meters");
  Tip(ui,
      "Spectrum and level as the shaders get them, and the time that the plug-in takes for a\n"
      "frame at this size. The line is the time that a frame has.");
}

}  // namespace krv::studio
