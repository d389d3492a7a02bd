// Texts by a regular expression. GoogleTest's own matchers know no groups and classes on Windows.
#pragma once

#include <gmock/gmock.h>

#include <regex>
#include <string>

namespace krv::test {

// Whether the whole text matches a regular expression in ECMAScript's grammar.
MATCHER_P(MatchesPattern, pattern, std::string("matches the pattern ") + pattern) {
  return std::regex_match(std::string(arg), std::regex(pattern));
}

// Whether a part of the text does.
MATCHER_P(HasPattern, pattern, std::string("has a part that matches the pattern ") + pattern) {
  return std::regex_search(std::string(arg), std::regex(pattern));
}

}  // namespace krv::test
