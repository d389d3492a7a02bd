#include "help/option_text.h"

namespace krv::tool {
namespace {

// Options of no group are hidden.
std::vector<const CLI::Option*> Shown(const CLI::App& command, bool positional) {
  return command.get_options([positional](const CLI::Option* option) {
    return option->get_positional() == positional && !option->get_group().empty();
  });
}

}  // namespace

std::vector<const CLI::Option*> ShownOptions(const CLI::App& command) {
  return Shown(command, false);
}

std::vector<const CLI::Option*> ShownPositionals(const CLI::App& command) {
  return Shown(command, true);
}

std::vector<const CLI::App*> ShownCommands(const CLI::App& app) {
  return app.get_subcommands([](const CLI::App* command) { return !command->get_group().empty(); });
}

std::vector<std::string> OptionNames(const CLI::Option& option) {
  std::vector<std::string> names;
  for (const std::string& name : option.get_snames()) names.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) names.push_back("--" + name);
  return names;
}

bool TakesValue(const CLI::Option& option) { return option.get_expected_max() > 0; }

}  // namespace krv::tool
