// New default values in the text of a description, the rest of which stays as it is.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "parameter_values.h"

namespace krv::studio {

using ValuesByName = std::map<std::string, host::HostValue, std::less<>>;

// The description's text with the "default_value" of the parameters of these names replaced: order,
// spaces, line ends and remarks stay, and numbers keep their form (1.0 becomes 2.0, not 2). Of two
// parameters of one name the last one is meant, as hosts do. Nothing, with one line in *error, when
// the text is not a description or a parameter is not in it.
std::optional<std::string> ReplaceDefaults(std::string_view text, const ValuesByName& values,
                                           std::string* error);

// Does that to a file, as SaveFile does. False, with one line in *error, when it cannot.
bool SaveDefaults(const std::filesystem::path& description, const ValuesByName& values,
                  std::string* error);

}  // namespace krv::studio
