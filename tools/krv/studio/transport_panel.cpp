#include "studio/transport_panel.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include "studio/widgets.h"

namespace krv::studio {
namespace {

constexpr float kTimeline = 40;
constexpr float kColumn = 3;          // units of a column of the timeline
constexpr float kRoomyChoices = 560;  // units that choices with captions take

// "1:02.04": minutes, seconds, frame.
std::string TimeText(double seconds, double rate) {
  const auto frames = static_cast<int64_t>(std::floor(seconds * rate + 1e-6));
  const auto per_second = std::max<int64_t>(1, std::llround(rate));
  const int64_t whole = frames / per_second;
  char text[48];
  std::snprintf(text, sizeof text, "%d:%02d.%02d", static_cast<int>(whole / 60),
                static_cast<int>(whole % 60), static_cast<int>(frames % per_second));
  return text;
}

struct SizeChoice {
  PreviewSize size;
  const char* text;
};
constexpr SizeChoice kSizes[] = {{PreviewSize::kFit, "Fit"},
                                 {PreviewSize::kFull, "1/1"},
                                 {PreviewSize::kHalf, "1/2"},
                                 {PreviewSize::kQuarter, "1/4"}};

struct QualityChoice {
  const char* quality;
  const char* text;
};
constexpr QualityChoice kQualities[] = {
    {"", "Package"}, {"low", "Low"}, {"medium", "Medium"}, {"high", "High"}};

}  // namespace

void TransportPanel::DrawTimeline(const Ui& ui, float width) {
  const Palette& colours = ui.look.colours();
  Studio& studio = ui.studio;
  ImDrawList* list = ImGui::GetWindowDrawList();
  const float height = ui.look.Px(kTimeline);
  const ImVec2 from = ImGui::GetCursorScreenPos();
  ImGui::InvisibleButton("timeline", {width, height});
  ui.marks.SetItem("timeline");
  const bool hovered = ImGui::IsItemHovered();
  const double at =
      std::clamp(static_cast<double>((ImGui::GetIO().MousePos.x - from.x) / width), 0.0, 1.0);
  if (ImGui::IsItemActivated()) {
    was_playing_ = studio.playing();
    studio.Pause();
  }
  if (ImGui::IsItemActive()) studio.Seek(std::min(at, 0.999999) * studio.length());
  if (ImGui::IsItemDeactivated() && was_playing_) studio.Play();

  list->AddRectFilled(from, {from.x + width, from.y + height}, colours.raised, ui.look.Px(6));
  const float step = ui.look.Px(kColumn);
  const auto columns = static_cast<size_t>(std::max(1.0f, width / step));
  if (peaks_.size() != columns) {
    const Clip& clip = studio.clip();
    peaks_ =
        clip.sound().Peaks(columns, std::llround(clip.Length() * clip.sound().format.sample_rate));
  }
  const auto share = static_cast<float>(studio.position() / studio.length());
  const float head = from.x + width * share;
  const float middle = from.y + height / 2;
  for (size_t i = 0; i < columns; ++i) {
    const float x = from.x + (static_cast<float>(i) + 0.5f) * step;
    const float half = std::max(ui.look.Px(1), peaks_[i] * (height / 2 - ui.look.Px(5)));
    list->AddRectFilled({x - step / 2 + 1, middle - half}, {x + step / 2, middle + half},
                        x <= head ? colours.accent : colours.faint);
  }
  list->AddRectFilled({head - ui.look.Px(1), from.y}, {head + ui.look.Px(1), from.y + height},
                      colours.text);
  if (hovered && !ImGui::IsItemActive()) {
    const std::string time = TimeText(at * studio.length(), studio.clip().video().rate.PerSecond());
    const float x = ImGui::GetIO().MousePos.x;
    list->AddLine({x, from.y}, {x, from.y + height}, colours.dim, 1);
    const ImVec2 size = SizeOf(ui.look.fonts().small, time);
    const float left = std::clamp(x + ui.look.Px(6), from.x, from.x + width - size.x);
    list->AddRectFilled({left - ui.look.Px(4), from.y + ui.look.Px(2)},
                        {left + size.x + ui.look.Px(4), from.y + ui.look.Px(4) + size.y},
                        colours.panel, ui.look.Px(4));
    PutText(list, ui.look.fonts().small, {left, from.y + ui.look.Px(3)}, colours.text, time);
  }
}

void TransportPanel::DrawButtons(const Ui& ui, float width) {
  const Palette& colours = ui.look.colours();
  Studio& studio = ui.studio;
  ImDrawList* list = ImGui::GetWindowDrawList();
  const ImVec2 start = ImGui::GetCursorScreenPos();
  const float left = ImGui::GetCursorPosX();
  const bool playing = studio.playing();
  if (IconButton(ui, "play", playing ? Icon::kPause : Icon::kPlay,
                 playing ? "Pause (Space)" : "Play (Space)", false, 36)) {
    studio.TogglePlay();
  }
  ImGui::SameLine();
  const double rate = studio.clip().video().rate.PerSecond();
  const ImVec2 here = ImGui::GetCursorScreenPos();
  const std::string now = TimeText(studio.position(), rate);
  PutText(list, ui.look.fonts().strong, {here.x, here.y + ui.look.Px(9)}, colours.text, now);
  const float after = SizeOf(ui.look.fonts().strong, "00:00.00").x + ui.look.Px(6);
  PutText(list, ui.look.fonts().small, {here.x + after, here.y + ui.look.Px(11)}, colours.dim,
          "/ " + TimeText(studio.length(), rate));
  ImGui::SetCursorScreenPos({here.x + after + ui.look.Px(84), start.y + ui.look.Px(2)});
  if (IconButton(ui, "loop", Icon::kLoop, "Loop (L)", studio.loop())) studio.ToggleLoop();
  ImGui::SameLine(0, ui.look.Px(4));
  const bool muted = studio.muted();
  if (IconButton(ui, "mute", muted ? Icon::kMuted : Icon::kSound,
                 muted ? "Sound on (M)" : "Mute (M)", muted)) {
    studio.ToggleMute();
  }
  if (!studio.keys().empty()) {
    ImGui::SameLine(0, ui.look.Px(16));
    if (IconButton(ui, "key_back", Icon::kKeyBack, "To the key before (Ctrl+Left)")) {
      studio.SeekKey(false);
    }
    ImGui::SameLine(0, ui.look.Px(4));
    if (IconButton(ui, "key_on", Icon::kKeyOn, "To the next key (Ctrl+Right)")) {
      studio.SeekKey(true);
    }
  }

  DrawChoices(ui, {start.x + width, start.y + ui.look.Px(6)},
              start.x + width - ImGui::GetItemRectMax().x);
  ImGui::SetCursorPosX(left);
}

void TransportPanel::DrawChoices(const Ui& ui, ImVec2 end, float room) {
  Studio& studio = ui.studio;
  const bool roomy = room > ui.look.Px(kRoomyChoices);
  float right = end.x;
  // Draws one on the left of what there is. Where there is little room it opens a list.
  const auto choose = [&](const char* id, const char* caption,
                          const std::vector<std::string>& texts, float wide, float narrow,
                          int* chosen) {
    const float width = ui.look.Px(roomy ? wide : narrow);
    right -= width;
    ImGui::SetCursorScreenPos({right, end.y});
    const bool changed = roomy ? Segments(ui, id, texts, chosen, width)
                               : DropDown(ui, id, caption, texts, chosen, width);
    right -= ui.look.Px(8);
    if (roomy) {
      ImFont* font = ui.look.fonts().small;
      right -= SizeOf(font, caption).x;
      PutText(ImGui::GetWindowDrawList(), font, {right, end.y + ui.look.Px(5)},
              ui.look.colours().dim, caption);
      right -= ui.look.Px(20);
    }
    return changed;
  };
  int chosen = 0;
  std::vector<std::string> texts;
  for (int i = 0; i < 4; ++i) {
    texts.emplace_back(kQualities[i].text);
    if (studio.quality() == kQualities[i].quality) chosen = i;
  }
  if (choose("quality", "Quality", texts, 232, 92, &chosen)) {
    studio.SetQuality(kQualities[chosen].quality);
  }
  texts.clear();
  for (int i = 0; i < 4; ++i) {
    texts.emplace_back(kSizes[i].text);
    if (studio.preview_size() == kSizes[i].size) chosen = i;
  }
  if (choose("size", "Picture", texts, 168, 60, &chosen)) {
    studio.SetPreviewSize(kSizes[chosen].size);
  }
}

void TransportPanel::Draw(const Ui& ui) {
  const float pad = ui.look.Px(18);
  const float width = ImGui::GetContentRegionAvail().x - 2 * pad;
  const ImVec2 start = ImGui::GetCursorScreenPos();
  ImGui::SetCursorScreenPos({start.x + pad, start.y + ui.look.Px(14)});
  DrawTimeline(ui, width);
  keys_.Draw(ui, {start.x + pad, start.y + ui.look.Px(57)}, width);
  ImGui::SetCursorScreenPos({start.x + pad, start.y + ui.look.Px(80)});
  DrawButtons(ui, width);
}

}  // namespace krv::studio
