// Where the widgets of the window lie, for programs that operate it.
#pragma once

#include <imgui.h>

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace krv::studio {

class Marks {
 public:
  struct Area {
    ImVec2 from;  // pixels of the window
    ImVec2 to;
  };

  // Of the item that Dear ImGui was given last.
  void SetItem(const std::string& name) {
    areas_[name] = {ImGui::GetItemRectMin(), ImGui::GetItemRectMax()};
  }

  void Set(const std::string& name, ImVec2 from, ImVec2 to) { areas_[name] = {from, to}; }

  void Clear() { areas_.clear(); }

  // Of the window's latest picture; nothing when it is not in it.
  std::optional<Area> Find(std::string_view name) const {
    const auto found = areas_.find(name);
    if (found == areas_.end()) return std::nullopt;
    return found->second;
  }

 private:
  std::map<std::string, Area, std::less<>> areas_;
};

}  // namespace krv::studio
