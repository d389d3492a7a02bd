// The program krv: makes, lists, checks, renders and measures audio-visual effects, and validates
// plug-ins.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <utility>
#include <vector>

#include "bench_command.h"
#include "check_command.h"
#include "command.h"
#include "demo_command.h"
#include "encipher_command.h"
#include "gallery_command.h"
#include "help/bash_completion.h"
#include "help/manual_page.h"
#include "list_command.h"
#include "nearest_name.h"
#include "new_command.h"
#include "platform/process.h"
#include "platform/standard_streams.h"
#include "render_command.h"
#include "studio_command.h"
#include "validate_command.h"
#include "version_text.h"

namespace {

using krv::tool::Action;

// What is wrong with the command line, in one line.
std::string Explain(const CLI::App& app, const CLI::ParseError& error, const std::string& first) {
  const bool no_command =
      dynamic_cast<const CLI::RequiredError*>(&error) != nullptr && app.get_subcommands().empty();
  // The library says "A subcommand is required" about a command that it does not know as well.
  if (!no_command || first.empty() || first.front() == '-') return error.what();
  std::vector<std::string> names;
  for (const CLI::App* command : app.get_subcommands(nullptr)) names.push_back(command->get_name());
  const auto nearest = krv::host::NearestName(first, names);
  return "there is no command \"" + first + "\"" +
         (nearest ? "; did you mean \"" + *nearest + "\"?" : "");
}

// The texts that the build makes of the command line. Whether one of them was asked for.
bool PrintForBuild(const CLI::App& app, const std::vector<std::string>& arguments) {
  if (arguments.size() != 1) return false;
  if (arguments.front() == "--print-manual") {
    std::fputs(krv::tool::ManualPage(app).c_str(), stdout);
    return true;
  }
  if (arguments.front() != "--print-completion") return false;
  std::fputs(krv::tool::BashCompletion(app).c_str(), stdout);
  return true;
}

int Run(std::vector<std::string> arguments) {
  CLI::App app("Lists, checks and renders audio-visual effects.", "krv");
  app.set_version_flag("--version", krv::tool::VersionText,
                       "Shows the version, and those of the libraries");
  app.require_subcommand(1);
  app.allow_windows_style_options(false);  // "/x" is a path on every platform
  Action action;
  krv::tool::AddDemoCommand(app, &action);
  krv::tool::AddListCommand(app, &action);
  krv::tool::AddNewCommand(app, &action);
  krv::tool::AddCheckCommand(app, &action);
  krv::tool::AddRenderCommand(app, &action);
  krv::tool::AddGalleryCommand(app, &action);
  krv::tool::AddStudioCommand(app, &action);
  krv::tool::AddEncipherCommand(app, &action);
  krv::tool::AddValidateCommand(app, &action);
  krv::tool::AddBenchCommand(app, &action);
  if (PrintForBuild(app, arguments)) return krv::tool::kExitOk;
  const std::string first = arguments.empty() ? std::string() : arguments.front();
  std::reverse(arguments.begin(), arguments.end());  // the order that parse expects
  try {
    app.parse(std::move(arguments));
  } catch (const CLI::Success& asked) {  // --help, --version
    return app.exit(asked);
  } catch (const CLI::ParseError& error) {
    return krv::tool::UsageError(Explain(app, error, first) + "; `krv --help` shows the usage");
  }
  return action();
}

}  // namespace

int main(int argc, char** argv) {
  krv::host::platform::PrepareStandardStreams();
  try {
    return Run(krv::host::platform::ProgramArguments(argc, argv));
  } catch (const std::exception& error) {
    return krv::tool::UsageError(error.what());
  }
}
