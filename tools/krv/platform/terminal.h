// The terminal the program was started from.
#pragma once

namespace krv::tool {

// Whether the error output is shown to a person rather than kept in a file.
bool ErrorOutputIsTerminal();

// The same of standard output.
bool OutputIsTerminal();

}  // namespace krv::tool
