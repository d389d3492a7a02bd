// krv render: an effect over a video, or over a background with sound.
#pragma once

#include <memory>
#include <string>

#include "command.h"
#include "effect_session.h"
#include "render_interrupt.h"
#include "render_options.h"

namespace krv::tool {

// Adds the subcommand; *action becomes what it does when the user chooses it.
void AddRenderCommand(CLI::App& app, Action* action);

// The effect of the arguments with their parameters. Null, with the reason in *error, when the
// effect or a parameter is not as the user says.
std::unique_ptr<host::EffectSession> OpenSession(const RenderArguments& arguments,
                                                 const RenderOptions& options, std::string* error);

// Does what `krv render` does with these arguments and the session opened with them, until `watch`
// says stop; returns the exit code. Throws MediaError.
int Render(const RenderArguments& arguments, const InterruptWatch& watch,
           host::EffectSession* session);

}  // namespace krv::tool
