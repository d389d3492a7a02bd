// Other programs, run as a user runs them.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "support/scratch_folder.h"

namespace krv::test {

struct ProgramOutcome {
  int code = -1;  // -1 for a program that a signal has ended
  std::string output;
  std::string error_output;
};

// Variables that the program gets besides those of this process, or in place of them.
using Environment = std::map<std::string, std::string>;

// The parts of a line between its blanks. Blanks between double quotes separate nothing, and the
// quotes fall away; no other character is special.
std::vector<std::string> SplitArguments(std::string_view line);

// Whether Process::Interrupt may be called. On Windows that takes a console, and time.
enum class Interruptible { kNo, kYes };

// A program that runs beside the test, without standard input.
class Process {
 public:
  // Starts a program with the arguments that SplitArguments makes of the line. The program is a
  // path, or a plain name for the system to find. Texts are UTF-8. Throws when it cannot be
  // started.
  Process(const std::string& program, std::string_view arguments, Interruptible interruptible,
          const Environment& environment = {});
  // Waits for its end.
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  // What Ctrl-C does.
  void Interrupt();

  // Waits for its end. To be called once.
  ProgramOutcome Wait();

 private:
  void Start(const std::string& program, const std::vector<std::string>& arguments,
             Interruptible interruptible, const Environment& environment);
  int WaitForCode();
  std::string Output(const char* name) const;

  ScratchFolder folder_;  // of the files "stdout" and "stderr"
  intptr_t process_ = 0;  // an identifier or a handle; 0 once waited for
};

// Runs a program to its end.
ProgramOutcome RunProgram(const std::string& program, std::string_view arguments,
                          const Environment& environment = {});

}  // namespace krv::test
