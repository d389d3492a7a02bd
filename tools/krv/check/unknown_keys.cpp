#include "check/unknown_keys.h"

#include <algorithm>

#include "nearest_name.h"

namespace krv::tool {

void LintUnknownKeys(const DescriptionDocument& document, const nlohmann::ordered_json& object,
                     const std::string& pointer, const std::string& owner,
                     const std::vector<std::string>& known, Findings* findings) {
  for (const auto& [key, value] : object.items()) {
    if (key.starts_with('$') || std::find(known.begin(), known.end(), key) != known.end()) continue;
    std::string message = "is not a key of " + owner;
    if (const auto nearest = host::NearestName(key, known)) {
      message += "; did you mean \"" + *nearest + "\"?";
    }
    std::string place = pointer;
    place.append("/").append(key);
    findings->push_back(document.At(place, Severity::kWarning, std::move(message)));
  }
}

}  // namespace krv::tool
