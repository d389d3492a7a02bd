#include "packaging/enciphered_copy.h"

#include "effects/package_cipher.h"
#include "packaging/new_folder.h"
#include "packaging/package_text.h"
#include "utf8_path.h"

namespace krv::tool {

std::vector<std::filesystem::path> MakeEncipheredCopy(const std::filesystem::path& from,
                                                      const std::filesystem::path& to) {
  const PackageText original(from);
  if (original.IsEnciphered()) throw PackagingError(host::Utf8(from) + ": is enciphered already");
  const auto files = original.ShaderFiles();
  if (files.empty()) {
    throw PackagingError(host::Utf8(from) +
                         ": has no shader file of its own, so there is nothing to encipher");
  }
  NewFolder folder(to);
  CopyInto(from, folder);
  for (const std::filesystem::path& file : files) {
    const std::filesystem::path copy = folder.path() / file;
    ReplaceFile(copy, Encipher(ReadWholeFile(copy)));
  }
  PackageText copy(folder.path());
  copy.Set("ENCRYPT", "1");
  copy.Save();
  folder.Keep();
  return files;
}

}  // namespace krv::tool
