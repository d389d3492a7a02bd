// Facts about the running process.
#pragma once

#include <filesystem>

namespace krv::host::platform {

// The folder that the running program's file lies in; empty when the system does not tell.
std::filesystem::path ExecutableFolder();

}  // namespace krv::host::platform
