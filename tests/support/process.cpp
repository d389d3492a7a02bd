#include "support/process.h"

#include <fstream>
#include <iterator>

namespace krv::test {

std::vector<std::string> SplitArguments(std::string_view line) {
  std::vector<std::string> arguments;
  bool quoted = false;
  bool inside = false;  // of an argument
  for (const char c : line) {
    if (c == ' ' && !quoted) {
      inside = false;
      continue;
    }
    if (!inside) arguments.emplace_back();
    inside = true;
    if (c == '"') {
      quoted = !quoted;
    } else {
      arguments.back() += c;
    }
  }
  return arguments;
}

Process::Process(const std::string& program, std::string_view arguments,
                 Interruptible interruptible, const Environment& environment) {
  Start(program, SplitArguments(arguments), interruptible, environment);
}

Process::~Process() {
  if (process_ != 0) WaitForCode();
}

ProgramOutcome Process::Wait() {
  const int code = WaitForCode();
  return {code, Output("stdout"), Output("stderr")};
}

std::string Process::Output(const char* name) const {
  std::ifstream file(folder_.path() / name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

ProgramOutcome RunProgram(const std::string& program, std::string_view arguments,
                          const Environment& environment) {
  return Process(program, arguments, Interruptible::kNo, environment).Wait();
}

}  // namespace krv::test
