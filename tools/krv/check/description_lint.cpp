#include "check/description_lint.h"

#include "check/package_entry.h"
#include "check/parameter_lint.h"
#include "check/unknown_keys.h"
#include "platform/file_system.h"
#include "shaders/builtin_shaders.h"
#include "utf8_path.h"

namespace krv::tool {
namespace {

using Json = nlohmann::ordered_json;

const std::vector<std::string>& Keys() {
  static const std::vector<std::string> keys = {
      "effect_type", "unique_name", "display_name", "version",      "input_list",
      "params",      "opengl_frag", "opengl_vert",  "blend_script", "without_blend",
      "quality",     "ENCRYPT",     "original"};
  return keys;
}

bool HasBuiltinName(const std::string& entry) {
  return FindBuiltinShader(BuiltinName(entry)).has_value();
}

class DescriptionLint {
 public:
  DescriptionLint(const DescriptionDocument& document, const std::filesystem::path& folder,
                  Findings* findings)
      : document_(document), json_(document.json()), folder_(folder), findings_(findings) {}

  void Run() {
    if (!json_.is_object()) {
      Report("", Severity::kError, "a description is an object, not " + TypeName(json_));
      return;
    }
    LintNames();
    LintInputs();
    LintShaders();
    LintSettings();
    LintUnknownKeys(document_, json_, "", "descriptions", Keys(), findings_);
    LintParameters(document_, findings_);
  }

 private:
  void Report(const std::string& pointer, Severity severity, std::string message) {
    findings_->push_back(document_.At(pointer, severity, std::move(message)));
  }

  // The value of an optional key if it is there and of that type.
  const Json* Get(const char* key, Json::value_t type, const char* wanted) {
    const auto found = json_.find(key);
    if (found == json_.end()) return nullptr;
    if (found->type() == type) return &*found;
    Report("/" + std::string(key), Severity::kError,
           std::string("must be ") + wanted + ", not " + TypeName(*found));
    return nullptr;
  }

  const std::string* GetText(const char* key) {
    const Json* value = Get(key, Json::value_t::string, "a text");
    return value == nullptr ? nullptr : &value->get_ref<const std::string&>();
  }

  void LintNames() {
    const std::string* type = GetText("effect_type");
    if (type == nullptr && !json_.contains("effect_type")) {
      Report("", Severity::kError,
             "\"effect_type\" is missing; it must be \"audio_visualization\"");
    } else if (type != nullptr && *type != "audio_visualization") {
      Report("/effect_type", Severity::kError,
             "must be \"audio_visualization\", not \"" + *type + "\": the package is ignored");
    }
    const std::string* name = GetText("unique_name");
    if (!json_.contains("unique_name") || (name != nullptr && name->empty())) {
      Report("", Severity::kError, "\"unique_name\" is missing; hosts find the effect by it");
    }
    if (!json_.contains("display_name")) {
      Report("", Severity::kWarning, "\"display_name\" is missing; users see an empty name");
    }
    GetText("display_name");
    GetText("version");
  }

  // Reports entries of other types; the texts of an array.
  std::vector<std::pair<std::string, std::string>> Entries(const char* key) {
    std::vector<std::pair<std::string, std::string>> entries;
    const Json* list = Get(key, Json::value_t::array, "an array of texts");
    if (list == nullptr) return entries;
    for (size_t i = 0; i < list->size(); ++i) {
      const std::string pointer = "/" + std::string(key) + "/" + std::to_string(i);
      const Json& entry = (*list)[i];
      if (entry.is_string()) {
        entries.emplace_back(pointer, entry.get<std::string>());
      } else {
        Report(pointer, Severity::kError, "must be a text, not " + TypeName(entry));
      }
    }
    return entries;
  }

  void LintInputs() {
    bool person = false;
    bool mask = false;
    for (const auto& [pointer, name] : Entries("input_list")) {
      if (name == "human_segment") {
        person = true;
      } else if (name == "mask") {
        mask = true;
      } else {
        Report(pointer, Severity::kWarning,
               "\"" + name + "\" is no input; there are \"human_segment\" and \"mask\"");
      }
    }
    if (person && mask) {
      Report("/input_list", Severity::kError,
             "\"human_segment\" and \"mask\" exclude each other: every frame would fail");
    }
  }

  void LintFile(const std::string& pointer, const std::string& entry) {
    if (LeadsOut(entry)) {
      Report(pointer, Severity::kError, "\"" + entry + "\" leads out of the package");
      return;
    }
    const std::filesystem::path file = PackageFile(folder_, entry);
    if (host::platform::IsFile(file)) return;
    Report(pointer, Severity::kError, "there is no file " + host::Utf8(file));
  }

  // A package with a version may have a file of a built-in shader's name.
  void LintFragmentShader(const std::string& pointer, const std::string& entry) {
    if (IsBuiltinShader(json_, entry)) return;
    if (!HasBuiltinName(entry) || host::platform::IsFile(PackageFile(folder_, entry))) {
      LintFile(pointer, entry);
      return;
    }
    Report(pointer, Severity::kError,
           "there is no file " + host::Utf8(PackageFile(folder_, entry)) +
               "; the built-in shader of this name is for packages without \"version\"");
  }

  void LintShaders() {
    for (const auto& [pointer, entry] : Entries("opengl_frag")) LintFragmentShader(pointer, entry);
    if (!json_.contains("opengl_frag") || json_["opengl_frag"] == Json::array()) {
      Report("", Severity::kError, "\"opengl_frag\" names no shader: the effect draws nothing");
    }
    const auto vertex_shaders = Entries("opengl_vert");
    for (const auto& [pointer, entry] : vertex_shaders) LintFile(pointer, entry);
    if (vertex_shaders.size() > 1) {
      Report("/opengl_vert/1", Severity::kWarning, "only the first vertex shader is used");
    }
    const std::string* blend = GetText("blend_script");
    if (blend != nullptr && !blend->empty()) LintFile("/blend_script", *blend);
  }

  void LintSettings() {
    Get("without_blend", Json::value_t::boolean, "true or false");
    Get("original", Json::value_t::boolean, "true or false");
    const std::string* enciphered = GetText("ENCRYPT");
    if (enciphered != nullptr && *enciphered != "1" && *enciphered != "0") {
      Report("/ENCRYPT", Severity::kWarning,
             "only \"1\" marks the shader files as enciphered, \"" + *enciphered + "\" does not");
    }
    const std::string* quality = GetText("quality");
    if (quality != nullptr && *quality != "low" && *quality != "medium" && *quality != "high") {
      Report("/quality", Severity::kWarning,
             "\"" + *quality +
                 "\" is none of \"low\", \"medium\" and \"high\"; it counts as "
                 "\"medium\"");
    }
  }

  const DescriptionDocument& document_;
  const Json& json_;
  const std::filesystem::path& folder_;
  Findings* findings_;
};

}  // namespace

void LintDescription(const DescriptionDocument& document, const std::filesystem::path& folder,
                     Findings* findings) {
  DescriptionLint(document, folder, findings).Run();
}

bool IsBuiltinShader(const nlohmann::ordered_json& description, const std::string& entry) {
  const auto version = description.find("version");
  const bool no_version = version == description.end() ||
                          (version->is_string() && version->get_ref<const std::string&>().empty());
  return no_version && HasBuiltinName(entry);
}

std::vector<std::string> TextsOf(const nlohmann::ordered_json& description, const char* key) {
  std::vector<std::string> texts;
  const auto found = description.find(key);
  if (found == description.end()) return texts;
  if (found->is_string()) return {found->get<std::string>()};
  if (!found->is_array()) return texts;
  for (const Json& entry : *found) {
    if (entry.is_string()) texts.push_back(entry.get<std::string>());
  }
  return texts;
}

}  // namespace krv::tool
