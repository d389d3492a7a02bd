#include "support/matches_pattern.h"

#include <regex>

namespace krv::test {

bool Matches(const std::string& text, const std::string& pattern) {
  return std::regex_match(text, std::regex(pattern));
}

bool HasMatch(const std::string& text, const std::string& pattern) {
  return std::regex_search(text, std::regex(pattern));
}

}  // namespace krv::test
