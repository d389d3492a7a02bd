// krv encipher: a copy of a package that hides its shaders.
#pragma once

#include "command.h"

namespace krv::tool {

// Adds the subcommand; *action becomes what it does when the user chooses it.
void AddEncipherCommand(CLI::App& app, Action* action);

}  // namespace krv::tool
