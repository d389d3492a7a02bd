#include "check/unread_parameters.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <optional>
#include <sstream>
#include <string_view>

#include "check/description_lint.h"
#include "check/package_entry.h"
#include "check/shader_words.h"
#include "krv/types.h"
#include "nearest_name.h"
#include "platform/file_system.h"
#include "shaders/builtin_shaders.h"

namespace krv::tool {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view kColor = "color";
constexpr std::array<std::string_view, 4> kColorUniforms = {"color", "color_r", "color_g",
                                                            "color_b"};
constexpr std::string_view kGradient = "gradient_color";
constexpr std::array<std::string_view, 2> kGradientUniforms = {"gradient_color_tex",
                                                               "gradient_color_count"};

// What effects of this kind of name read themselves, for the points along outlines.
constexpr std::string_view kMaskShape = "audio_visualization_mask_shape";
constexpr std::array<std::string_view, 3> kReadByMaskShape = {"point_gap", "point_size",
                                                              "max_length"};

template <class Values, class Value>
bool Contains(const Values& values, const Value& value) {
  return std::find(values.begin(), values.end(), value) != values.end();
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

template <class Names>
bool HoldsAny(const ShaderWords& words, const Names& names) {
  return std::any_of(names.begin(), names.end(),
                     [&words](std::string_view name) { return words.Holds(name); });
}

struct Parameter {
  std::string name;
  int64_t kind;
};

Parameter ReadParameter(const Json& parameter) {
  const auto name = parameter.at("name").get<std::string>();
  if (parameter.value("ui_type", std::string()) == "Color") return {name, kKindColor};
  return {name, parameter.at("type").get<int64_t>()};
}

// Nothing when the file cannot be read.
std::optional<std::string> ReadText(const std::filesystem::path& path) {
  std::ifstream file(host::platform::OpenablePath(path), std::ios::binary);
  std::ostringstream text;
  if (!file || !(text << file.rdbuf())) return std::nullopt;
  return text.str();
}

// The shaders that the plug-in builds of a package.
class PackageShaders {
 public:
  // Whether all of them could be read.
  bool Read(const Json& description, const std::filesystem::path& folder) {
    for (const std::string& entry : TextsOf(description, "opengl_frag")) {
      if (IsBuiltinShader(description, entry)) {
        words_.Add(FindBuiltinShader(BuiltinName(entry)).value());
      } else if (!AddFile(PackageFile(folder, entry))) {
        return false;
      }
    }
    const std::vector<std::string> vertex = TextsOf(description, "opengl_vert");
    if (!vertex.empty() && !AddFile(PackageFile(folder, vertex.front()))) return false;
    const auto blend = description.value("blend_script", std::string());
    if (!blend.empty()) return AddFile(PackageFile(folder, blend));
    words_.Add(DefaultBlendShader());
    return true;
  }

  const ShaderWords& words() const { return words_; }

  // Whether there is a file in which the author could declare a uniform.
  bool has_files() const { return has_files_; }

 private:
  bool AddFile(const std::filesystem::path& file) {
    const std::optional<std::string> text = ReadText(file);
    if (text) words_.Add(*text);
    has_files_ = true;
    return text.has_value();
  }

  ShaderWords words_;
  bool has_files_ = false;
};

// Elements of arrays and members of structures are uniforms too: "lights[0].size".
bool MayBeUniform(const ShaderWords& words, std::string_view name) {
  constexpr std::string_view kBetween = ".[]";
  auto at = name.begin();
  while (at != name.end()) {
    const auto end = std::find_if_not(at, name.end(), IsWordCharacter);
    const bool is_index = at != name.begin() && at != end && IsDigit(*at);
    if (at != end && !is_index && !words.Holds({at, end})) return false;
    if (end == name.end()) break;
    if (!Contains(kBetween, *end)) return false;
    at = end + 1;
  }
  return true;
}

// Whether a shader could declare a uniform of this name.
bool IsIdentifier(std::string_view name) {
  const auto fits = [](char c) {
    return IsWordCharacter(c) && static_cast<unsigned char>(c) < 0x80;
  };
  return std::all_of(name.begin(), name.end(), fits) && !IsDigit(name.front()) &&
         !name.starts_with("gl_");
}

const char* UniformType(int64_t kind) {
  if (kind == kKindFloat) return "float";
  return kind == kKindBool ? "bool" : "int";
}

class UnreadParameters {
 public:
  UnreadParameters(const Json& description, const PackageShaders& shaders)
      : description_(description), shaders_(shaders), words_(shaders.words()) {
    for (const Json& parameter : description["params"]) {
      names_.push_back(ReadParameter(parameter).name);
    }
  }

  bool IsRead(const Parameter& parameter) const {
    const bool mask_shape =
        description_.value("unique_name", std::string()).find(kMaskShape) != std::string::npos;
    if (mask_shape && Contains(kReadByMaskShape, parameter.name)) return true;
    if (parameter.name == kGradient) {
      return parameter.kind == kKindText && HoldsAny(words_, kGradientUniforms);
    }
    if (parameter.kind == kKindText) return false;
    if (parameter.name == kColor) return HoldsAny(words_, kColorUniforms);
    return parameter.kind != kKindDouble && MayBeUniform(words_, parameter.name);
  }

  // What to do about a parameter that is not read.
  std::string Advice(const Parameter& parameter) const {
    if (parameter.name == kGradient) {
      return parameter.kind == kKindText ? Declare("sampler2D gradient_color_tex")
                                         : ": a gradient is a text, of type 8";
    }
    if (parameter.kind == kKindDouble && parameter.name != kColor) {
      return ": values of type 6 reach no uniform; make it type 5, or remove the parameter";
    }
    if (const auto nearest = host::NearestName(parameter.name, NamesWanted(parameter.kind))) {
      return "; did you mean \"" + *nearest + "\"?";
    }
    if (parameter.kind == kKindText) {
      return ": texts reach shaders as \"gradient_color\" only; remove the parameter";
    }
    if (!IsIdentifier(parameter.name)) return ": correct the name, or remove the parameter";
    const char* type = parameter.name == kColor ? "int" : UniformType(parameter.kind);
    return Declare(std::string(type) + " " + parameter.name);
  }

 private:
  // What shaders read, a value of that kind could be, and no parameter is.
  std::vector<std::string> NamesWanted(int64_t kind) const {
    std::vector<std::string> wanted;
    const auto want = [this, &wanted](std::string_view name) {
      if (!Contains(names_, name)) wanted.emplace_back(name);
    };
    if (kind == kKindText) {
      if (HoldsAny(words_, kGradientUniforms)) want(kGradient);
      return wanted;
    }
    if (HoldsAny(words_, kColorUniforms)) want(kColor);
    for (const std::string& name : words_.numbers()) {
      if (!Contains(kColorUniforms, name) && !Contains(kGradientUniforms, name)) want(name);
    }
    return wanted;
  }

  std::string Declare(const std::string& uniform) const {
    if (!shaders_.has_files()) return ": correct the name, or remove the parameter";
    return ": declare \"uniform " + uniform + "\" in one, or remove the parameter";
  }

  const Json& description_;
  const PackageShaders& shaders_;
  const ShaderWords& words_;
  std::vector<std::string> names_;  // of all parameters
};

}  // namespace

void LintUnreadParameters(const DescriptionDocument& document, const std::filesystem::path& folder,
                          Findings* findings) {
  const Json& description = document.json();
  if (!description.contains("params")) return;
  if (description.value("ENCRYPT", std::string()) == "1") return;
  PackageShaders shaders;
  if (!shaders.Read(description, folder) || shaders.words().pastes_names()) return;
  const UnreadParameters unread(description, shaders);
  const Json& parameters = description["params"];
  for (size_t i = 0; i < parameters.size(); ++i) {
    const Parameter parameter = ReadParameter(parameters[i]);
    if (unread.IsRead(parameter)) continue;
    findings->push_back(
        document.At("/params/" + std::to_string(i) + "/name", Severity::kWarning,
                    "no shader reads \"" + parameter.name + "\"" + unread.Advice(parameter)));
  }
}

}  // namespace krv::tool
