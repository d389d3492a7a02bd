// What is wrong with a description, judged by the file alone.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "check/description_document.h"
#include "check/finding.h"

namespace krv::tool {

// Appends what is wrong with the description of the package in `folder`.
void LintDescription(const DescriptionDocument& document, const std::filesystem::path& folder,
                     Findings* findings);

// Whether the plug-in carries the shader of an "opengl_frag" entry itself. It looks entries up
// by their BuiltinName, in packages without a version.
bool IsBuiltinShader(const nlohmann::ordered_json& description, const std::string& entry);

// The texts of an array of texts, or of a lone text; empty when the key is absent or of another
// type.
std::vector<std::string> TextsOf(const nlohmann::ordered_json& description, const char* key);

}  // namespace krv::tool
