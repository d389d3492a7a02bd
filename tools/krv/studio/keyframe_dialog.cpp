#include "studio/keyframe_dialog.h"

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

Replaces KeyframeDialog::Replaced(const Studio& studio) const {
  const bool others = !file_.empty() && File() != studio.keyframe_file();
  return others && host::platform::IsFile(File()) ? Replaces::kFile : Replaces::kNothing;
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
  BeginDialog(ui, "keyframes", closing_ ? "The keyframes are not saved" : "Save the keyframes");
  const bool entered = FileField(ui, "keyframes/file", &file_);
  if (ImGui::IsItemEdited()) problem_.clear();
  const Replaces replaces = Replaced(ui.studio);
  FileRemark(ui, problem_, replaces,
             "Every value that is not the default, for krv render --params");
  ImGui::Dummy({0, ui.look.Px(10)});
  const char* save = closing_ ? "Save and close" : "Save";
  if (WriteButton(ui, "keyframes/save", save, replaces, entered, !file_.empty())) Save(&ui.studio);
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
