#include "check/package_entry.h"

#include <algorithm>

#include "utf8_path.h"

namespace krv::tool {

namespace fs = std::filesystem;

fs::path EntryPath(const std::string& entry) {
  std::string portable = entry;
  std::replace(portable.begin(), portable.end(), '\\', '/');
  return host::PathFromUtf8(portable).relative_path().make_preferred();
}

fs::path PackageFile(const fs::path& folder, const std::string& entry) {
  return folder / EntryPath(entry);
}

bool LeadsOut(const std::string& entry) {
  const fs::path plain = EntryPath(entry).lexically_normal();
  return !plain.empty() && *plain.begin() == "..";
}

std::string_view BuiltinName(std::string_view entry) { return entry.substr(entry.rfind('\\') + 1); }

}  // namespace krv::tool
