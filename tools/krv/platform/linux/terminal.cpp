#include "platform/terminal.h"

#include <unistd.h>

namespace krv::tool {

bool ErrorOutputIsTerminal() { return isatty(STDERR_FILENO) == 1; }

bool OutputIsTerminal() { return isatty(STDOUT_FILENO) == 1; }

}  // namespace krv::tool
