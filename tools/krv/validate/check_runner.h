// Runs a test of the validator in a process of its own, and says what has become of it.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>

#include "validate/bench.h"
#include "validate/check.h"
#include "validate/journal.h"

namespace krv::tool {

enum class Outcome { kPassed, kFailed, kCrashed, kHung };

// "passed", "failed", "crashed" or "hung".
const char* OutcomeName(Outcome outcome);

struct CheckResult {
  const Check* check = nullptr;
  Outcome outcome = Outcome::kPassed;
  Journal journal;     // its failures say what was done, what was expected, what came
  std::string reason;  // of a crash or a hang
  std::string output;  // the last lines that the process wrote, of a crash or a hang
  double seconds = 0;
};

// The options of the hidden command line by which the process of a check is started.
inline constexpr char kRunCheckOption[] = "--run-check";
inline constexpr char kJournalOption[] = "--journal";

// Starts the running program anew for one check. `scratch`: a folder for its files.
CheckResult RunInChild(const Check& check, const BenchOptions& options,
                       std::chrono::milliseconds limit, const std::filesystem::path& scratch);

// What that process does. The exit code.
int RunHere(const Check& check, const BenchOptions& options, const std::filesystem::path& journal);

}  // namespace krv::tool
