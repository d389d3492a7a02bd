// krv new: a package for an author to begin with.
#pragma once

#include "command.h"

namespace krv::tool {

// Adds the subcommand; *action becomes what it does when the user chooses it.
void AddNewCommand(CLI::App& app, Action* action);

}  // namespace krv::tool
