// Reads the "params" of a description.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "description/parameter_description.h"

namespace krv {

using ParameterList = std::vector<std::shared_ptr<const ParameterDescription>>;
using ParameterMap =
    std::map<std::string, std::shared_ptr<const ParameterDescription>, std::less<>>;

// Result of ReadParameters when the description declares none.
inline constexpr int32_t kNoParameters = 3;

// Replaces `list` by the entries of root["params"] in file order, and `by_name` by the same records
// under their names, of which a later one replaces an earlier. 0, or kNoParameters when there is no
// such key. Raises the JSON library's error for an entry without a name, or a "type" or value of
// the wrong JSON type.
int32_t ReadParameters(const nlohmann::json& root, ParameterList& list, ParameterMap& by_name);

}  // namespace krv
