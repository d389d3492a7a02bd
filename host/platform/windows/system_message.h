// Windows' error codes in words.
#pragma once

#include <string>

namespace krv::host::platform {

// The system's text for an error code of GetLastError, in UTF-8 and on one line.
std::string SystemMessage(unsigned long code);

}  // namespace krv::host::platform
