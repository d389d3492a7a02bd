// Windows' texts.
#pragma once

#include <string>
#include <string_view>

namespace krv::host::platform {

// UTF-16 as UTF-8; halves of surrogate pairs become replacement characters.
std::string ToUtf8(std::wstring_view text);

}  // namespace krv::host::platform
