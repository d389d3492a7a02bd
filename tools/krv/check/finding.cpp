#include "check/finding.h"

#include <algorithm>

namespace krv::tool {

bool HasErrors(const Findings& findings) {
  return std::any_of(findings.begin(), findings.end(),
                     [](const Finding& finding) { return finding.severity == Severity::kError; });
}

std::string ToText(const Finding& finding) {
  std::string text = finding.file;
  if (finding.line > 0) text += ":" + std::to_string(finding.line);
  if (finding.line > 0 && finding.column > 0) text += ":" + std::to_string(finding.column);
  text += finding.severity == Severity::kError ? ": error: " : ": warning: ";
  if (!finding.pointer.empty()) text += finding.pointer + ": ";
  return text + finding.message;
}

}  // namespace krv::tool
