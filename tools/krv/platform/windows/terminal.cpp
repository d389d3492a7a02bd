#include "platform/terminal.h"

#include <windows.h>

namespace krv::tool {

namespace {

bool IsTerminal(DWORD stream) {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(stream), &mode) != 0;
}

}  // namespace

bool ErrorOutputIsTerminal() { return IsTerminal(STD_ERROR_HANDLE); }

bool OutputIsTerminal() { return IsTerminal(STD_OUTPUT_HANDLE); }

}  // namespace krv::tool
