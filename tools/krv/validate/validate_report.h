// What a validation has found: for people, and for programs.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "validate/check_runner.h"

namespace krv::tool {

// One thing that is wrong, which may be the reason why many tests fail.
struct Complaint {
  std::string what;   // what was expected, or the crash
  int64_t tests = 0;  // in how many it was found
  std::string first;  // the first one's name, and how it was found there
};

struct Validation {
  BenchOptions options;
  std::vector<CheckResult> results;
  double seconds = 0;

  int64_t Failures() const;                   // tests that did not pass
  int64_t Checks() const;                     // things looked at, in all tests
  std::vector<Complaint> Complaints() const;  // the most frequent first
};

// One test: a line, and below it one line for each of its first failures.
std::string ToText(const CheckResult& result);

// The complaints and the last line.
std::string Summary(const Validation& validation);

// False when the file cannot be written.
bool WriteReport(const Validation& validation, const std::filesystem::path& file);

}  // namespace krv::tool
