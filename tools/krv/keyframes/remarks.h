// What stands in a file of keyframes beside the values, for editors and people: members whose names
// begin with "$". Pure functions, for any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "json_places.h"

namespace krv::tool {

// The member as the file has it: "$comment": "the first beat"
using Remark = std::string;

// A remark of the file itself.
struct FileRemark {
  Remark remark;
  // The parameter in front of which it stands, "" behind the last one. Without one it stands in
  // front of all, whichever comes first.
  std::optional<std::string> before;

  bool operator==(const FileRemark&) const = default;
};

inline bool IsRemark(std::string_view name) { return name.starts_with('$'); }

// In the order of `members`, which are an object's.
std::vector<Remark> RemarksAmong(const JsonPlaces::Members& members, const JsonPlaces& places);

// The same, of the file's own members.
std::vector<FileRemark> FileRemarksAmong(const JsonPlaces::Members& members,
                                         const JsonPlaces& places);

}  // namespace krv::tool
