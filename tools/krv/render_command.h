// krv render: an effect over a video, or over a background with sound.
#pragma once

#include "command.h"
#include "render_options.h"

namespace krv::tool {

// Adds the subcommand; *action becomes what it does when the user chooses it.
void AddRenderCommand(CLI::App& app, Action* action);

// Does what `krv render` does with these arguments; returns the exit code. Throws MediaError.
int Render(const RenderArguments& arguments);

}  // namespace krv::tool
