// What all subcommands share.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "find_files.h"

namespace CLI {
class App;  // takes seconds to compile
}

namespace krv::tool {

enum ExitCode : int {
  kExitOk = 0,
  kExitFound = 1,          // something is wrong with what was checked or rendered
  kExitUsage = 2,          // a bad option, a missing file, an unknown effect
  kExitInterrupted = 130,  // as shells report a program that Ctrl-C ended
};

// What the chosen subcommand does; returns the exit code.
using Action = std::function<int()>;

// Prints "krv: " and the message as one line on standard error.
void Complain(const std::string& message);

// Complains and returns kExitUsage.
int UsageError(const std::string& message);

// The options --plugin and --packages.
class FileOptions {
 public:
  void AddPlugin(CLI::App& command);
  void AddPackages(CLI::App& command);

  host::FileWishes wishes() const;

 private:
  std::string plugin_;
  std::vector<std::string> packages_;
};

}  // namespace krv::tool
