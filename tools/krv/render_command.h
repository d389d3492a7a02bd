// krv render: an effect over a video, or over a background with sound.
#pragma once

#include "command.h"

namespace krv::tool {

// Adds the subcommand; *action becomes what it does when the user chooses it.
void AddRenderCommand(CLI::App& app, Action* action);

}  // namespace krv::tool
