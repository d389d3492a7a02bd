#include "platform/standard_streams.h"

#include <unistd.h>

#include <cstdio>

namespace krv::host::platform {

void PrepareStandardStreams() {}  // nothing is changed on the way, and terminals expect UTF-8

int TakeStandardOutput() {
  std::fflush(stdout);
  const int taken = dup(STDOUT_FILENO);
  if (taken >= 0) dup2(STDERR_FILENO, STDOUT_FILENO);
  return taken;
}

}  // namespace krv::host::platform
