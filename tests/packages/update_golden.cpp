// update_golden PLUGIN PACKAGES GOLDEN: makes the golden pictures anew where they have changed, and
// says which.
#include <cstdio>
#include <stdexcept>

#include "media/png_encoder.h"
#include "media/still_source.h"
#include "packages/golden_pictures.h"
#include "platform/file_system.h"
#include "platform/process.h"
#include "utf8_path.h"

namespace krv::test {
namespace {

// What changed; empty when the picture that is there stays.
std::string Update(const host::Picture& picture, const std::filesystem::path& file) {
  std::string change = "new";
  if (host::platform::IsFile(file)) {
    const auto difference = Compare(host::LoadPicture(file, {}), picture);
    if (difference.WithinTolerance(picture)) return "";
    change = ToText(difference);
  }
  host::PngEncoder().Write(picture, file);
  return change;
}

int UpdateAll(GoldenRenderer* renderer, const std::filesystem::path& golden) {
  int changes = 0;
  for (const std::string& name : renderer->Names()) {
    const std::string change = Update(renderer->Render(name), golden / (name + ".png"));
    if (change.empty()) continue;
    std::printf("%s: %s\n", name.c_str(), change.c_str());
    ++changes;
  }
  return changes;
}

// Pictures of packages that are gone.
int RemoveOthers(const std::filesystem::path& packages, const std::filesystem::path& golden) {
  int changes = 0;
  const auto entries = host::platform::ListFolder(golden);
  if (!entries) throw std::runtime_error("cannot list " + host::Utf8(golden));
  for (const auto& entry : *entries) {
    if (host::platform::IsFolder(packages / entry.path.stem())) continue;
    std::error_code error;
    host::platform::Remove(entry.path, error);
    if (error) throw std::system_error(error, host::Utf8(entry.path));
    std::printf("%s: removed\n", host::Utf8(entry.path.stem()).c_str());
    ++changes;
  }
  return changes;
}

}  // namespace
}  // namespace krv::test

int main(int argc, char** argv) {
  const auto arguments = krv::host::platform::ProgramArguments(argc, argv);
  if (arguments.size() != 3) {
    std::fputs("usage: update_golden PLUGIN PACKAGES GOLDEN\n", stderr);
    return 2;
  }
  try {
    const auto packages = krv::host::PathFromUtf8(arguments[1]);
    const auto golden = krv::host::PathFromUtf8(arguments[2]);
    krv::test::GoldenRenderer renderer(krv::host::PathFromUtf8(arguments[0]), packages);
    const int changes =
        krv::test::UpdateAll(&renderer, golden) + krv::test::RemoveOthers(packages, golden);
    if (changes == 0) std::puts("Nothing has changed.");
  } catch (const std::exception& error) {
    std::fprintf(stderr, "update_golden: %s\n", error.what());
    return 1;
  }
  return 0;
}
