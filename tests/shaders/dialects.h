// The built-in shaders and the languages that each of them must compile in.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "graphics/opengl/impl/shader.h"
#include "shaders/builtin_shaders.h"

namespace krv {

enum class Language { kDesktop, kEs100, kEs300 };

// Each comes with and without the macro that exchanges red and blue.
struct Dialect {
  const char* name;
  Language language;
  bool exchanges = false;
};

inline constexpr Dialect kDialects[] = {
    {"InGlsl120", Language::kDesktop}, {"InGlsl120Angle", Language::kDesktop, true},
    {"InGlslEs100", Language::kEs100}, {"InGlslEs100Angle", Language::kEs100, true},
    {"InGlslEs300", Language::kEs300}, {"InGlslEs300Angle", Language::kEs300, true}};

inline void PrintTo(const Dialect& dialect, std::ostream* out) { *out << dialect.name; }

// A shader of the catalogue or, without a file name, the blend shader.
struct CarriedShader {
  const char* name;
  const char* file_name;
  // The halo shaders ask for the extension in every version of OpenGL ES, the others in the first.
  bool always_asks_for_extension = false;

  std::string Source() const {
    return std::string(*file_name == '\0' ? DefaultBlendShader() : *FindBuiltinShader(file_name));
  }
};

inline constexpr CarriedShader kCarriedShaders[] = {
    {"Flat", "audio_visualization_geometry.frag"},
    {"HaloGeometry", "audio_visualization_halo_geometry.frag", true},
    {"HaloSpectrum", "audio_visualization_halo_spectrum.frag", true},
    {"Blend", ""}};

inline void PrintTo(const CarriedShader& shader, std::ostream* out) { *out << shader.name; }

using ShaderInDialect = std::tuple<CarriedShader, Dialect>;

inline std::string NameOfDialect(const ::testing::TestParamInfo<ShaderInDialect>& info) {
  return std::string(std::get<0>(info.param).name) + std::get<1>(info.param).name;
}

// The source in the dialect, with a line for each define: GLSL ES 3.00 as the graphics layer makes
// it, the others with their own version line.
inline std::string Translated(const std::string& source, const Dialect& dialect,
                              std::vector<std::string> defines = {"UNUSED"}) {
  if (dialect.exchanges) defines.emplace_back("GOOGLE_ANGLE");
  std::string text;
  for (const std::string& piece : GL::SourceStrings(source, defines)) text += piece;
  if (dialect.language == Language::kEs300) return text;
  const char* version = dialect.language == Language::kEs100 ? "#version 100" : "#version 120";
  return version + text.substr(text.find('\n'));
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
