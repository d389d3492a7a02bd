// The JSON document of a description.
#pragma once

#include <nlohmann/json.hpp>
#include <string_view>

namespace krv {

// Raises the JSON library's error for a text that is not JSON, and std::length_error for a document
// beyond the limits of package_limits.h.
nlohmann::json ParseDocument(std::string_view text);

}  // namespace krv
