#include "nearest_name.h"

#include <algorithm>
#include <numeric>

namespace krv::host {
namespace {

// Insertions, deletions and replacements that turn one text into the other.
size_t EditDistance(std::string_view from, std::string_view to) {
  std::vector<size_t> row(to.size() + 1);
  std::iota(row.begin(), row.end(), size_t{0});
  for (size_t i = 0; i < from.size(); ++i) {
    size_t diagonal = row[0];
    row[0] = i + 1;
    for (size_t j = 0; j < to.size(); ++j) {
      const size_t replaced = diagonal + (from[i] == to[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
    }
  }
  return row.back();
}

}  // namespace

std::optional<std::string> NearestName(std::string_view name,
                                       const std::vector<std::string>& names) {
  size_t best = std::max<size_t>((name.size() + 1) / 3, 1) + 1;
  std::optional<std::string> nearest;
  for (const std::string& candidate : names) {
    const size_t distance = EditDistance(name, candidate);
    if (distance >= best) continue;
    best = distance;
    nearest = candidate;
  }
  return nearest;
}

}  // namespace krv::host
