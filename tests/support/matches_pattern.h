// Texts by a regular expression. GoogleTest's own matchers know no groups and classes on Windows.
#pragma once

#include <gmock/gmock.h>

#include <string>

namespace krv::test {

// Whether the whole text, or a part of it, matches a regular expression in ECMAScript's grammar.
bool Matches(const std::string& text, const std::string& pattern);
bool HasMatch(const std::string& text, const std::string& pattern);

MATCHER_P(MatchesPattern, pattern, std::string("matches the pattern ") + pattern) {
  return Matches(std::string(arg), pattern);
}

MATCHER_P(HasPattern, pattern, std::string("has a part that matches the pattern ") + pattern) {
  return HasMatch(std::string(arg), pattern);
}

}  // namespace krv::test
