#include "studio/export_dialog.h"

#include <algorithm>
#include <cstdio>

#include "progress.h"
#include "studio/dialog.h"
#include "studio/widgets.h"

namespace krv::studio {
namespace {

constexpr double kLookInterval = 0.5;  // seconds

}  // namespace

void ExportDialog::Open(const Studio& studio) {
  open_ = true;
  if (!output_.empty()) return;
  const std::string& name = studio.package().unique_name;
  output_ = (name.empty() ? "export" : name) + ".mp4";
}

void ExportDialog::AskToClose() {
  open_ = true;
  closing_ = true;
}

void ExportDialog::Dismiss(Studio* studio) {
  if (std::exchange(closing_, false)) return;
  if (studio->export_state().Running()) {
    studio->CancelExport();
    return;
  }
  studio->ForgetExport();
  open_ = false;
}

Replaces ExportDialog::Replaced(const Studio& studio, bool now) {
  if (now || output_ != looked_for_ || Studio::Now() - looked_ > kLookInterval) {
    replaces_ = ReplacedByExport(output_, studio.clip().frame_count());
    looked_for_ = output_;
    looked_ = Studio::Now();
  }
  return replaces_;
}

void ExportDialog::DrawWishes(const Ui& ui) {
  const bool entered = FileField(ui, "export/output", &output_);
  const Replaces told = replaces_;
  const Replaces replaces = Replaced(ui.studio, false);
  FileRemark(ui, "", replaces,
             "The ending chooses the format: .mp4 .mkv .mov .webm, NAME%05d.png or FOLDER/");
  ImGui::Dummy({0, ui.look.Px(4)});
  Toggle(ui, "export/transparent", &transparent_);
  ImGui::SameLine(0, ui.look.Px(10));
  ImGui::TextUnformatted("The figure alone, transparent (.mov .webm .png)");
  ImGui::Dummy({0, ui.look.Px(10)});
  const bool go = WriteButton(ui, "export/go", "Export", replaces, entered,
                              ui.studio.package().ready && !output_.empty());
  ImGui::SameLine();
  if (TextButton(ui, "export/close", "Close", ButtonKind::kPlain)) Dismiss(&ui.studio);
  if (!go) return;
  // A file may have come since the last picture of the window.
  const Replaces found = Replaced(ui.studio, true);
  if (found == Replaces::kNothing || found == told) {
    ui.studio.StartExport(output_, transparent_);
  }
}

void ExportDialog::DrawProgress(const Ui& ui) {
  const Palette& colours = ui.look.colours();
  const ExportState& state = ui.studio.export_state();
  const bool preparing = state.phase == ExportState::Phase::kPreparing;
  const double share = preparing ? state.share
                       : state.total > 0
                           ? static_cast<double>(state.frames) / static_cast<double>(state.total)
                           : 0;
  Caption(ui, state.output);
  const ImVec2 from = ImGui::GetCursorScreenPos();
  const float width = ImGui::GetContentRegionAvail().x;
  const float height = ui.look.Px(8);
  ImDrawList* list = ImGui::GetWindowDrawList();
  list->AddRectFilled(from, {from.x + width, from.y + height}, colours.raised, height / 2);
  list->AddRectFilled(from, {from.x + width * static_cast<float>(share), from.y + height},
                      preparing ? colours.dim : colours.accent, height / 2);
  ImGui::Dummy({width, height + ui.look.Px(4)});
  if (preparing) {
    ImGui::TextUnformatted("Preparing the clip");
  } else {
    char text[96];
    const double rate = state.seconds > 0 ? static_cast<double>(state.frames) / state.seconds : 0;
    std::snprintf(text, sizeof text, "%lld of %lld frames, %.0f frames per second",
                  static_cast<long long>(state.frames),
                  static_cast<long long>(std::max(state.total, state.frames)), rate);
    ImGui::TextUnformatted(text);
  }
  ImGui::Dummy({0, ui.look.Px(10)});
  if (!closing_) {
    if (TextButton(ui, "export/cancel", "Cancel", ButtonKind::kPlain)) Dismiss(&ui.studio);
    return;
  }
  Wrapped("Closing the studio ends it.", colours.warning);
  ImGui::Dummy({0, ui.look.Px(10)});
  if (TextButton(ui, "export/stay", "Keep exporting", ButtonKind::kPrimary)) Dismiss(&ui.studio);
  ImGui::SameLine();
  if (TextButton(ui, "export/leave", "End it and close", ButtonKind::kPlain)) {
    closing_ = false;
    leave_ = true;
  }
}

void ExportDialog::DrawResult(const Ui& ui) {
  const Palette& colours = ui.look.colours();
  const ExportState& state = ui.studio.export_state();
  switch (state.phase) {
    case ExportState::Phase::kDone:
      Wrapped(state.message, colours.text);
      break;
    case ExportState::Phase::kCancelled:
      Wrapped("Cancelled. Nothing was written.", colours.text);
      break;
    default:
      Wrapped(state.message, colours.error);
      break;
  }
  ImGui::Dummy({0, ui.look.Px(10)});
  const bool done = state.phase == ExportState::Phase::kDone;
  if (TextButton(ui, "export/close", done ? "Done" : "Close", ButtonKind::kPrimary)) {
    Dismiss(&ui.studio);
    return;
  }
  ImGui::SameLine();
  if (TextButton(ui, "export/again", "Export again", ButtonKind::kPlain)) ui.studio.ForgetExport();
}

void ExportDialog::Draw(const Ui& ui) {
  if (!open_) return;
  const ExportState& state = ui.studio.export_state();
  closing_ = closing_ && state.Running();
  BeginDialog(ui, "export", closing_ ? "The export is not finished" : "Export");
  if (state.Running()) {
    DrawProgress(ui);
  } else if (state.phase == ExportState::Phase::kNone) {
    DrawWishes(ui);
  } else {
    DrawResult(ui);
  }
  EndDialog();
}

}  // namespace krv::studio
