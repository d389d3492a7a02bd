// Keys that mean nothing to the plug-in.
#pragma once

#include <string>
#include <vector>

#include "check/description_document.h"
#include "check/finding.h"

namespace krv::tool {

// Reports the keys of the object at `pointer` that are not in `known`; `owner` names what has such
// keys, in the plural. Keys that begin with "$" are for editors and remarks.
void LintUnknownKeys(const DescriptionDocument& document, const nlohmann::ordered_json& object,
                     const std::string& pointer, const std::string& owner,
                     const std::vector<std::string>& known, Findings* findings);

}  // namespace krv::tool
