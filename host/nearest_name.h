// Suggestions for mistyped names.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace krv::host {

// The name that is fewest single-letter edits away from `name`, if that is at most a third of its
// length (rounded, at least 1); the first of equals.
std::optional<std::string> NearestName(std::string_view name,
                                       const std::vector<std::string>& names);

}  // namespace krv::host
