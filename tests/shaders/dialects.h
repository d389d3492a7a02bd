// The languages that a built-in shader must compile in.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <sstream>
#include <string>
#include <string_view>

namespace krv {

// Each comes with and without the macro that exchanges red and blue.
struct Dialect {
  const char* name;
  const char* head;
  bool driver_knows_extension = true;
};

inline constexpr Dialect kDialects[] = {
    {"Glsl120", "#version 120\n"},
    {"Glsl120Angle", "#version 120\n#define GOOGLE_ANGLE\n"},
    {"GlslEs100", "#version 100\n", false},
    {"GlslEs300", "#version 300 es\n"},
    {"GlslEs300Angle", "#version 300 es\n#define GOOGLE_ANGLE\n"}};

inline void PrintTo(const Dialect& dialect, std::ostream* out) { *out << dialect.name; }

inline std::string NameOfDialect(const ::testing::TestParamInfo<Dialect>& dialect) {
  return dialect.param.name;
}

// The source with the dialect's head in place of its first line.
inline std::string Translated(std::string_view source, const Dialect& dialect) {
  return dialect.head + std::string(source.substr(source.find('\n') + 1));
}

// A compiler must have nothing to say, except that it does not know the extension.
inline void ExpectOnlyExtensionNotices(const std::string& log, int allowed) {
  std::istringstream lines(log);
  int notices = 0;
  for (std::string line; std::getline(lines, line);) {
    if (line.empty()) continue;
    EXPECT_THAT(line, ::testing::AllOf(::testing::HasSubstr("GL_EXT_gpu_shader4"),
                                       ::testing::HasSubstr("supported")));
    ++notices;
  }
  EXPECT_LE(notices, allowed);
}

}  // namespace krv
