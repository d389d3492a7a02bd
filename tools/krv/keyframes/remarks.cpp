#include "keyframes/remarks.h"

namespace krv::tool {

std::vector<Remark> RemarksAmong(const JsonPlaces::Members& members, const JsonPlaces& places) {
  std::vector<Remark> remarks;
  for (const auto& member : members) {
    if (IsRemark(member.name)) remarks.emplace_back(places.Text(member.whole));
  }
  return remarks;
}

std::vector<FileRemark> FileRemarksAmong(const JsonPlaces::Members& members,
                                         const JsonPlaces& places) {
  std::vector<FileRemark> remarks;
  size_t waiting = 0;  // for the parameter behind them, from this one on
  bool first = true;
  for (const auto& member : members) {
    if (IsRemark(member.name)) {
      remarks.push_back({std::string(places.Text(member.whole)), {}});
      if (!first) remarks.back().before.emplace();
      continue;
    }
    for (; waiting < remarks.size(); ++waiting) {
      if (!first) remarks[waiting].before = member.name;
    }
    first = false;
  }
  return remarks;
}

}  // namespace krv::tool
