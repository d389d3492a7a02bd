// EffectDescription: one effect package, as its "description.json" tells it.
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "description/parameter_reader.h"

namespace krv {

enum RenderQuality : int32_t {
  kQualityLow = 0,
  kQualityMedium = 1,
  kQualityHigh = 2,
};

// Filled once by LoadDescription and never changed afterwards: the registry and all instances share
// it as std::shared_ptr<const EffectDescription>, and any thread may read it.
//
// The accessors in CamelCase look their key up in the document on every call. They raise the JSON
// library's error when the key holds another JSON type than it should.
class EffectDescription {
 public:
  EffectDescription() = default;
  EffectDescription(const EffectDescription&) = delete;
  EffectDescription& operator=(const EffectDescription&) = delete;

  // Reads the file at the full UTF-8 path of a "description.json". 0, or 4 when the file cannot be
  // opened or describes another type of effect: json() is then null. Raises the JSON library's
  // error when the file is not valid JSON or holds wrong JSON types, and std::length_error when it
  // is beyond a limit of package_limits.h.
  int32_t LoadDescription(std::string_view path);
  // The same with the contents of that file.
  int32_t ReadDescription(std::string_view text, std::string_view path);

  std::string UniqueName() const;   // empty when absent
  std::string DisplayName() const;  // empty when absent
  std::string Version() const;      // empty when absent

  // Whether the effect is laid over the input frame at the end.
  bool BlendEnabled() const;
  // Full path, or empty when the package has no blend script of its own.
  std::string BlendScriptPath() const;
  // Full paths, one per pass, in the order of the file.
  std::vector<std::string> FragmentShaderPaths() const;
  std::vector<std::string> VertexShaderPaths() const;

  RenderQuality Quality() const;  // medium for an absent or unknown text
  bool UsesHumanSegment() const;  // the effect wants the mask of the person in the picture
  bool UsesMask() const;          // the effect wants a mask image of the host's
  bool Enciphered() const;        // the package's shader files are stored enciphered
  bool Original() const;

  const nlohmann::json& json() const { return json_; }
  const std::set<std::string, std::less<>>& input_names() const { return input_names_; }
  const ParameterMap& parameters_by_name() const { return parameters_by_name_; }
  const ParameterList& parameters() const { return parameters_; }
  // The description's path without its last separator and file name.
  const std::string& package_folder() const { return package_folder_; }

 private:
  std::string PathInPackage(const std::string& file) const;
  std::vector<std::string> PathsInPackage(const char* key) const;

  nlohmann::json json_;
  std::set<std::string, std::less<>> input_names_;
  ParameterMap parameters_by_name_;
  ParameterList parameters_;
  std::string package_folder_;
};

}  // namespace krv
