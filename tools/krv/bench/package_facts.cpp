#include "bench/package_facts.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "package_files.h"
#include "platform/file_system.h"
#include "utf8_path.h"

namespace krv::tool {
namespace {

std::optional<std::string> ReadText(const std::filesystem::path& path) {
  std::ifstream file(host::platform::OpenablePath(path), std::ios::binary);
  if (!file) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(file), {});
}

std::string WithoutComments(const std::string& shader) {
  std::string text;
  for (size_t i = 0; i < shader.size();) {
    size_t end = i;
    if (shader.compare(i, 2, "//") == 0) {
      end = shader.find('\n', i);
    } else if (shader.compare(i, 2, "/*") == 0) {
      end = shader.find("*/", i + 2);
      if (end != std::string::npos) end += 2;
    }
    if (end == i) {
      text += shader[i++];
    } else {
      text += ' ';
      i = std::min(end, shader.size());
    }
  }
  return text;
}

bool IsNamePart(char letter) {
  return std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '_';
}

// By the plug-in's rule.
bool BlendsByGl(const nlohmann::json& description) {
  const auto vertex_shaders = description.value("opengl_vert", std::vector<std::string>());
  const auto parameters = description.value("params", nlohmann::json::array());
  return !description.value("blend_script", std::string()).empty() || !vertex_shaders.empty() ||
         std::any_of(parameters.begin(), parameters.end(), [](const nlohmann::json& parameter) {
           const std::string name = parameter.value("name", std::string());
           return name == "blend" || name == "effect_tex";
         });
}

}  // namespace

bool ReadsName(const std::string& shader, const std::string& name) {
  const std::string text = WithoutComments(shader);
  int uses = 0;
  for (size_t i = text.find(name); i != std::string::npos; i = text.find(name, i + 1)) {
    const bool begins = i == 0 || !IsNamePart(text[i - 1]);
    const size_t end = i + name.size();
    if (begins && (end == text.size() || !IsNamePart(text[end]))) ++uses;
  }
  return uses > 1;  // the declaration is one
}

std::optional<PackageFacts> ReadPackageFacts(const std::filesystem::path& folder,
                                             std::string* error) {
  const auto path = folder / host::kDescriptionFileName;
  const auto text = ReadText(path);
  if (!text) {
    *error = host::Utf8(path) + ": cannot be read";
    return std::nullopt;
  }
  try {
    const auto description = nlohmann::json::parse(*text);
    PackageFacts facts;
    facts.unique_name = description.at("unique_name");
    const std::string quality = description.value("quality", std::string());
    if (quality == "low" || quality == "high") facts.quality = quality;
    const auto shaders = description.value("opengl_frag", std::vector<std::string>());
    facts.passes = static_cast<int>(shaders.size());
    if (!shaders.empty()) {
      const auto shader = ReadText(folder / host::PathFromUtf8(shaders.front()));
      facts.reads_background = shader && ReadsName(*shader, "background_tex");
    }
    facts.without_blend = description.value("without_blend", false);
    facts.blends_by_gl = BlendsByGl(description);
    facts.original = description.value("original", false);
    return facts;
  } catch (const nlohmann::json::exception& failure) {
    *error = host::Utf8(path) + ": " + failure.what();
    return std::nullopt;
  }
}

FrameSize EffectSizeOf(const PackageFacts& facts, FrameSize output) {
  const int limit = facts.quality == "low" ? 320 : facts.quality == "high" ? 720 : 480;
  const int shorter = std::min(output.width, output.height);
  if (facts.original || shorter <= limit) return output;
  const double scale = static_cast<double>(limit) / shorter;
  return {std::max(1, static_cast<int>(output.width * scale)),
          std::max(1, static_cast<int>(output.height * scale))};
}

}  // namespace krv::tool
