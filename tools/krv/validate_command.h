// `krv validate`: is a plug-in fit for a hostile host?
#pragma once

#include "command.h"

namespace krv::tool {

void AddValidateCommand(CLI::App& app, Action* action);

}  // namespace krv::tool
