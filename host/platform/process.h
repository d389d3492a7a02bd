// Facts about the running process.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace krv::host::platform {

// The folder that the running program's file lies in; empty when the system does not tell.
std::filesystem::path ExecutableFolder();

// The program's arguments in UTF-8, without its name. `argc`, `argv`: those of main. On Windows
// they are not used: what main gets there has lost the letters that the system's code page lacks.
std::vector<std::string> ProgramArguments(int argc, char** argv);

}  // namespace krv::host::platform
