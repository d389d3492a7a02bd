// Completion of command lines in bash, out of the commands and their options.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace krv::tool {

// A script for bash to read. It completes commands and options, and leaves all else, such as files,
// to bash.
std::string BashCompletion(const CLI::App& app);

}  // namespace krv::tool
