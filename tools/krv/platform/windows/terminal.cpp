#include "platform/terminal.h"

#include <windows.h>

namespace krv::tool {

bool ErrorOutputIsTerminal() {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

}  // namespace krv::tool
