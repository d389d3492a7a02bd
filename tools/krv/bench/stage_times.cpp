#include "bench/stage_times.h"

#include <algorithm>
#include <charconv>
#include <sstream>

namespace krv::tool {
namespace {

constexpr std::string_view kIntroduction = "Frame times (us) : ";

}  // namespace

StageTimes ParseStageTimes(std::string_view line) {
  const size_t found = line.find(kIntroduction);
  if (found == std::string_view::npos) return {};
  std::istringstream words{std::string(line.substr(found + kIntroduction.size()))};
  StageTimes times;
  for (std::string word; words >> word;) {
    const size_t equals = word.find('=');
    if (equals == std::string::npos) continue;
    double us = 0;
    const char* end = word.data() + word.size();
    const auto [rest, error] = std::from_chars(word.data() + equals + 1, end, us);
    if (error == std::errc() && rest == end) times.emplace_back(word.substr(0, equals), us);
  }
  return times;
}

std::vector<NamedSpread> StageSpreads(const std::vector<StageTimes>& frames) {
  std::vector<std::pair<std::string, std::vector<double>>> stages;
  for (const StageTimes& frame : frames) {
    for (const auto& [name, us] : frame) {
      auto stage = std::find_if(stages.begin(), stages.end(),
                                [&name](const auto& known) { return known.first == name; });
      if (stage == stages.end()) stage = stages.insert(stages.end(), {name, {}});
      stage->second.push_back(us / 1000);
    }
  }
  std::vector<NamedSpread> spreads;
  for (const auto& [name, values] : stages) spreads.push_back({name, SpreadOf(values)});
  return spreads;
}

}  // namespace krv::tool
