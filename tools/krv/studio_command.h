// krv studio: works on a package in a window.
#pragma once

#include "command.h"

namespace krv::tool {

// Adds the subcommand; *action becomes what it does when the user chooses it.
void AddStudioCommand(CLI::App& app, Action* action);

}  // namespace krv::tool
