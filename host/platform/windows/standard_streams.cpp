#include "platform/standard_streams.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>

namespace krv::host::platform {
namespace {

UINT terminal_encoding = 0;  // of the terminal before this program; 0 without a terminal

// A terminal keeps its encoding when the program ends.
void RestoreTerminal() {
  std::fflush(nullptr);  // what is still to be shown is UTF-8
  SetConsoleOutputCP(terminal_encoding);
}

}  // namespace

void PrepareStandardStreams() {
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  terminal_encoding = GetConsoleOutputCP();
  if (terminal_encoding == 0) return;
  SetConsoleOutputCP(CP_UTF8);
  std::atexit(RestoreTerminal);
  // Without a buffer, letters would reach the terminal byte by byte, which it does not put
  // together.
  std::setvbuf(stdout, nullptr, _IOFBF, BUFSIZ);
  std::setvbuf(stderr, nullptr, _IOFBF, BUFSIZ);
}

int TakeStandardOutput() {
  std::fflush(stdout);
  const int taken = _dup(_fileno(stdout));
  if (taken < 0) return -1;
  _setmode(taken, _O_BINARY);
  _dup2(_fileno(stderr), _fileno(stdout));
  return taken;
}

}  // namespace krv::host::platform
