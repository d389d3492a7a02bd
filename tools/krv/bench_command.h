// krv bench: what frames cost.
#pragma once

#include "command.h"

namespace krv::tool {

// Adds the subcommand; *action becomes what it does when the user chooses it.
void AddBenchCommand(CLI::App& app, Action* action);

}  // namespace krv::tool
