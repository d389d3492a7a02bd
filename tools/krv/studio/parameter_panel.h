// Every parameter of the package with its control.
#pragma once

#include <set>
#include <string>

#include "studio/gradient_editor.h"
#include "studio/ui.h"

namespace krv::studio {

class ParameterPanel {
 public:
  // Fills the space there is.
  void Draw(const Ui& ui);

 private:
  void DrawHeading(const Ui& ui);
  void DrawGroup(const Ui& ui, const ParameterGroup& group);
  void DrawRow(const Ui& ui, const host::ParameterListing& parameter, float width);
  void DrawLabel(const Ui& ui, const host::ParameterListing& parameter, float width);
  void DrawButtons(const Ui& ui, const host::ParameterListing& parameter, ImVec2 at);
  void DrawNumber(const Ui& ui, const host::ParameterListing& parameter, float width);
  void DrawColour(const Ui& ui, const host::ParameterListing& parameter, float width);
  void DrawText(const Ui& ui, const host::ParameterListing& parameter, float width);

  GradientEditor gradients_;
  std::set<std::string> folded_;  // titles of groups
  bool folded_hidden_ = false;    // whether the group of hidden ones was folded at first
};

}  // namespace krv::studio
