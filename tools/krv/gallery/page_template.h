// Pages made from text files with placeholders.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace krv::tool {

using TemplateValues = std::map<std::string, std::string, std::less<>>;

// The text with every "{{name}}" replaced by the value of that name, as it is: placeholders inside
// values stay. Throws std::invalid_argument for a name without a value and a "{{" without "}}".
std::string FillTemplate(std::string_view text, const TemplateValues& values);

}  // namespace krv::tool
