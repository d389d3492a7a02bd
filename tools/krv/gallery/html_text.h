// Texts and bytes as parts of a page.
#pragma once

#include <string>
#include <string_view>

namespace krv::tool {

// The text for use between tags and inside quoted attributes.
std::string EscapeHtml(std::string_view text);

// "data:TYPE;base64,..." for bytes of that media type.
std::string DataUri(std::string_view type, std::string_view bytes);

}  // namespace krv::tool
