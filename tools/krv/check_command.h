// krv check: what is wrong with packages.
#pragma once

#include "command.h"

namespace krv::tool {

// Adds the subcommand; *action becomes what it does when the user chooses it.
void AddCheckCommand(CLI::App& app, Action* action);

}  // namespace krv::tool
