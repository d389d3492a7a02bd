// The manual page, out of the texts of --help.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace krv::tool {

// In the man macros of troff, section 1.
std::string ManualPage(const CLI::App& app);

}  // namespace krv::tool
