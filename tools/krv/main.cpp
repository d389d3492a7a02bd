// The program krv: lists, checks and renders audio-visual effects.
#include <CLI/CLI.hpp>
#include <exception>

#include "check_command.h"
#include "command.h"
#include "list_command.h"

namespace {

using krv::tool::Action;

int Run(int argc, char** argv) {
  CLI::App app("Lists, checks and renders audio-visual effects.", "krv");
  app.set_version_flag("--version", "krv " KRV_VERSION);
  app.require_subcommand(1);
  Action action;
  krv::tool::AddListCommand(app, &action);
  krv::tool::AddCheckCommand(app, &action);
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& asked) {  // --help, --version
    return app.exit(asked);
  } catch (const CLI::ParseError& error) {
    return krv::tool::UsageError(std::string(error.what()) + "; `krv --help` shows the usage");
  }
  return action();
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run(argc, argv);
  } catch (const std::exception& error) {
    return krv::tool::UsageError(error.what());
  }
}
