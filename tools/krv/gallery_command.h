// krv gallery: every effect on one page.
#pragma once

#include "command.h"

namespace krv::tool {

// Adds the subcommand; *action becomes what it does when the user chooses it.
void AddGalleryCommand(CLI::App& app, Action* action);

}  // namespace krv::tool
