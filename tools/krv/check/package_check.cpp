#include "check/package_check.h"

#include "check/description_document.h"
#include "check/description_lint.h"
#include "check/effect_check.h"
#include "check/unread_parameters.h"
#include "package_files.h"
#include "utf8_path.h"

namespace krv::tool {

Findings PackageChecker::Check(const std::filesystem::path& folder) {
  Findings findings;
  const auto document = DescriptionDocument::Read(folder / host::kDescriptionFileName, &findings);
  if (!document) return findings;
  LintDescription(*document, folder, &findings);
  CheckName(*document, folder, &findings);
  CheckEffect(plugin_, *document, folder, &findings);
  if (!HasErrors(findings)) LintUnreadParameters(*document, folder, &findings);
  return findings;
}

void PackageChecker::CheckName(const DescriptionDocument& document,
                               const std::filesystem::path& folder, Findings* findings) {
  for (const std::string& name : TextsOf(document.json(), "unique_name")) {
    const auto [other, is_new] = seen_.emplace(name, host::Utf8(folder));
    if (is_new) continue;
    findings->push_back(document.At("/unique_name", Severity::kError,
                                    "\"" + name + "\" is the name of the package in " +
                                        other->second + " too: hosts see one of them only"));
  }
}

}  // namespace krv::tool
