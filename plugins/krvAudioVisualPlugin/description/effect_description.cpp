#include "description/effect_description.h"

#include "description/description_document.h"
#include "description/package_limits.h"
#include "krv/types.h"
#include "platform/file_system.h"

namespace krv {
namespace {

using nlohmann::json;

// The value under `key`, or `fallback` when the root has no such key.
template <class T>
T ValueOr(const json& root, const char* key, T fallback) {
  const auto found = root.find(key);
  return found == root.end() ? fallback : found->get<T>();
}

bool HasText(const json& root, const char* key, const char* text) {
  const auto found = root.find(key);
  return found != root.end() && *found == text;
}

// A path without any separator is its own folder.
std::string_view FolderOf(std::string_view path) {
  return path.substr(0, path.find_last_of("/\\"));
}

}  // namespace

int32_t EffectDescription::LoadDescription(std::string_view path) {
  const auto text = platform::ReadFile(path, kLargestPackageFile);
  return text ? ReadDescription(*text, path) : kFailed;
}

int32_t EffectDescription::ReadDescription(std::string_view text, std::string_view path) {
  json_ = ParseDocument(text);
  package_folder_ = FolderOf(path);
  if (!HasText(json_, "effect_type", "audio_visualization")) {
    json_ = nullptr;
    return kFailed;
  }
  if (input_names_.empty()) input_names_ = ValueOr(json_, "input_list", input_names_);
  ReadParameters(json_, parameters_, parameters_by_name_);  // an effect may have none
  return kOk;
}

std::string EffectDescription::UniqueName() const {
  return ValueOr(json_, "unique_name", std::string());
}

std::string EffectDescription::DisplayName() const {
  return ValueOr(json_, "display_name", std::string());
}

std::string EffectDescription::Version() const { return ValueOr(json_, "version", std::string()); }

bool EffectDescription::BlendEnabled() const { return !ValueOr(json_, "without_blend", false); }

std::string EffectDescription::BlendScriptPath() const {
  const auto script = json_.find("blend_script");
  return script == json_.end() ? std::string() : PathInPackage(script->get<std::string>());
}

std::vector<std::string> EffectDescription::FragmentShaderPaths() const {
  return PathsInPackage("opengl_frag");
}

std::vector<std::string> EffectDescription::VertexShaderPaths() const {
  return PathsInPackage("opengl_vert");
}

RenderQuality EffectDescription::Quality() const {
  const auto quality = ValueOr(json_, "quality", std::string());
  if (quality == "low") return kQualityLow;
  if (quality == "high") return kQualityHigh;
  return kQualityMedium;
}

bool EffectDescription::UsesHumanSegment() const { return input_names_.contains("human_segment"); }

bool EffectDescription::UsesMask() const { return input_names_.contains("mask"); }

bool EffectDescription::Enciphered() const { return HasText(json_, "ENCRYPT", "1"); }

bool EffectDescription::Original() const { return ValueOr(json_, "original", false); }

// Packages use the backslash on every platform; the platform layer understands it.
std::string EffectDescription::PathInPackage(const std::string& file) const {
  return package_folder_ + '\\' + file;
}

std::vector<std::string> EffectDescription::PathsInPackage(const char* key) const {
  auto paths = ValueOr(json_, key, std::vector<std::string>());
  for (std::string& path : paths) path = PathInPackage(path);
  return paths;
}

}  // namespace krv
