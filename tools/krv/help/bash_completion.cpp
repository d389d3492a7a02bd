#include "help/bash_completion.h"

#include "help/option_text.h"

namespace krv::tool {
namespace {

constexpr char kStart[] = R"(# bash completion for krv

_krv() {
  local word=${COMP_WORDS[COMP_CWORD]} command= words= i
  for ((i = 1; i < COMP_CWORD; i++)); do
    [[ ${COMP_WORDS[i]} == -* ]] || { command=${COMP_WORDS[i]}; break; }
  done
  case $command in
)";

// Without a reply bash completes names of files.
constexpr char kEnd[] = R"(  esac
  COMPREPLY=()
  if [[ -z $command || $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
  fi
}
complete -o default -F _krv krv
)";

std::string Words(const CLI::App& command) {
  std::string words;
  for (const CLI::App* name : ShownCommands(command)) words += " " + name->get_name();
  for (const CLI::Option* option : ShownOptions(command)) {
    for (const std::string& name : OptionNames(*option)) words += " " + name;
  }
  return words.empty() ? words : words.substr(1);
}

std::string Case(const std::string& pattern, const CLI::App& command) {
  return "    " + pattern + ") words='" + Words(command) + "' ;;\n";
}

}  // namespace

std::string BashCompletion(const CLI::App& app) {
  std::string script = kStart + Case("''", app);
  for (const CLI::App* command : ShownCommands(app)) script += Case(command->get_name(), *command);
  return script + kEnd;
}

}  // namespace krv::tool
