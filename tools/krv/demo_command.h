// krv demo: the demo clip with an effect.
#pragma once

#include "command.h"

namespace krv::tool {

// Adds the subcommand; *action becomes what it does when the user chooses it.
void AddDemoCommand(CLI::App& app, Action* action);

}  // namespace krv::tool
