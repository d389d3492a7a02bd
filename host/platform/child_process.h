// Another program, run to its end under watch.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace krv::host::platform {

struct ChildCommand {
  std::filesystem::path program;
  std::vector<std::string> arguments;  // in UTF-8, without the program's name
  std::filesystem::path output;        // a file for what it writes to standard output and error
  std::chrono::milliseconds limit{0};  // when it still runs then, it is killed
};

struct ChildEnd {
  enum class Kind { kEnded, kCrashed, kTimedOut, kNotStarted };
  Kind kind = Kind::kNotStarted;
  int code = 0;        // of kEnded
  std::string reason;  // of kCrashed and kNotStarted: what the system calls it
};

// Starts the program without standard input and waits for its end. Any thread.
ChildEnd RunChild(const ChildCommand& command);

}  // namespace krv::host::platform
