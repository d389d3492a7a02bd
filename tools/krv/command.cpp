#include "command.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>

#include "utf8_path.h"

namespace krv::tool {

void Complain(const std::string& message) {
  std::string line = "krv: " + message;
  while (line.back() == '\n') line.pop_back();
  std::replace(line.begin(), line.end(), '\n', ' ');
  line += '\n';
  std::fputs(line.c_str(), stderr);
  std::fflush(stderr);
}

int UsageError(const std::string& message) {
  Complain(message);
  return kExitUsage;
}

void FileOptions::AddPlugin(CLI::App& command) {
  command.add_option("--plugin", plugin_,
                     "The plug-in's file (default: beside the program, or installed)");
}

void FileOptions::AddPackages(CLI::App& command) {
  command
      .add_option("--packages", packages_,
                  "A folder with effect packages; may be given several times (default: beside the "
                  "program, or installed)")
      ->allow_extra_args(false);
}

host::FileWishes FileOptions::wishes() const {
  host::FileWishes wishes{host::PathFromUtf8(plugin_), {}};
  for (const std::string& folder : packages_) wishes.packages.push_back(host::PathFromUtf8(folder));
  return wishes;
}

}  // namespace krv::tool
