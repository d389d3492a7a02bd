// What the command line's options are called, for texts made of them.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace krv::tool {

// The options that help shows, in its order; those without dashes are the positional ones.
std::vector<const CLI::Option*> ShownOptions(const CLI::App& command);
std::vector<const CLI::Option*> ShownPositionals(const CLI::App& command);

// The commands that help shows, in its order.
std::vector<const CLI::App*> ShownCommands(const CLI::App& app);

// Every way to write the option: "-o", "--output".
std::vector<std::string> OptionNames(const CLI::Option& option);

// Whether a value follows the option.
bool TakesValue(const CLI::Option& option);

}  // namespace krv::tool
