// UTF-8 texts as the wide texts that Windows takes. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace krv::platform {

// Bytes that are not UTF-8 become U+FFFD.
std::wstring Wide(std::string_view utf8);

std::string Utf8(std::wstring_view wide);

// The absolute path behind a UTF-8 path, with the prefix that lifts the limit of 260 characters.
// For calls of Windows itself: the C library's functions reject the prefix.
std::wstring ExtendedPath(std::string_view utf8_path);

}  // namespace krv::platform
