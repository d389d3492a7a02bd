// One thing that is wrong with a package.
#pragma once

#include <string>
#include <vector>

namespace krv::tool {

enum class Severity {
  kError,    // the package does not work, or not as it says
  kWarning,  // the package works, but hardly as its author means it
};

struct Finding {
  Severity severity = Severity::kError;
  std::string file = {};     // UTF-8
  int line = 0;              // from 1; 0 when unknown
  int column = 0;            // from 1; 0 when unknown
  std::string pointer = {};  // JSON pointer to the value; empty outside descriptions
  std::string message = {};
};

using Findings = std::vector<Finding>;

bool HasErrors(const Findings& findings);

// "FILE:LINE:COLUMN: error: POINTER: MESSAGE", without what is unknown.
std::string ToText(const Finding& finding);

}  // namespace krv::tool
