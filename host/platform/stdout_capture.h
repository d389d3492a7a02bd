// What the plug-in prints: shader compilers' messages go to standard output.
#pragma once

#include <memory>
#include <string>

namespace krv::host::platform {

// Keeps everything that the process writes to standard output, through whichever library, from
// construction to Stop. One at a time; other threads' output is kept as well.
class StdoutCapture {
 public:
  // Null on failure, with the system's reason in *error.
  static std::unique_ptr<StdoutCapture> Start(std::string* error);
  ~StdoutCapture();
  StdoutCapture(const StdoutCapture&) = delete;
  StdoutCapture& operator=(const StdoutCapture&) = delete;

  // Ends the capture and returns what was written.
  std::string Stop();

 private:
  StdoutCapture(int saved, int file) : saved_(saved), file_(file) {}
  int saved_;  // the process's own standard output; -1 once put back
  int file_;
};

}  // namespace krv::host::platform
