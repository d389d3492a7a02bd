#include "studio/keyframe_dialog.h"

#include <imgui_stdlib.h>

#include "platform/file_system.h"
#include "studio/dialog.h"
#include "studio/widgets.h"
#include "utf8_path.h"

namespace krv::studio {

std::filesystem::path KeyframeDialog::File() const {
  std::filesystem::path file = host::PathFromUtf8(file_);
  if (!file.has_extension()) file += ".json";
  return file;
}

bool KeyframeDialog::Replaces(const Studio& studio) const {
  return !file_.empty() && File() != studio.keyframe_file() && host::platform::IsFile(File());
}

void KeyframeDialog::Open(const Studio& studio, bool closing) {
  open_ = true;
  closing_ = closing;
  problem_.clear();
  if (!studio.keyframe_file().empty()) {
    file_ = host::Utf8(studio.keyframe_file());
  } else if (file_.empty()) {
    const std::string& name = studio.package().unique_name;
    file_ = (name.empty() ? "keyframes" : name) + ".params.json";
  }
}

void KeyframeDialog::Save(Studio* studio) {
  if (file_.empty()) return;
  if (studio->SaveKeyframes(File())) {
    open_ = false;
    leave_ = closing_;
  } else {
    problem_ = studio->notice();
  }
}

void KeyframeDialog::Draw(const Ui& ui) {
  if (!open_) return;
  const Palette& colours = ui.look.colours();
  BeginDialog(ui, "keyframes", closing_ ? "The keyframes are not saved" : "Save the keyframes");
  Caption(ui, "File");
  ImGui::SetNextItemWidth(-1);
  const bool entered = ImGui::InputText("##file", &file_, ImGuiInputTextFlags_EnterReturnsTrue);
  ui.marks.SetItem("keyframes/file");
  const bool replaces = Replaces(ui.studio);
  if (ImGui::IsItemEdited()) problem_.clear();
  if (!problem_.empty()) {
    Wrapped(problem_, colours.error);
  } else if (replaces) {
    Wrapped("There is a file of this name.", colours.warning);
  } else {
    Caption(ui, "Every value that is not the default, for krv render --params");
  }
  ImGui::Dummy({0, ui.look.Px(10)});
  const char* save = replaces ? "Replace it" : closing_ ? "Save and close" : "Save";
  // Enter never writes over what is there.
  if (TextButton(ui, "keyframes/save", save, ButtonKind::kPrimary, !file_.empty()) ||
      (entered && !replaces)) {
    Save(&ui.studio);
  }
  ImGui::SameLine();
  if (closing_) {
    if (TextButton(ui, "keyframes/discard", "Close without saving", ButtonKind::kPlain))
      leave_ = true;
    ImGui::SameLine();
  }
  if (TextButton(ui, "keyframes/cancel", "Cancel", ButtonKind::kPlain)) open_ = false;
  EndDialog();
}

}  // namespace krv::studio
