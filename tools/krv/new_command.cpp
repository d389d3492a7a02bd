#include "new_command.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <optional>
#include <vector>

#include "nearest_name.h"
#include "package_files.h"
#include "packaging/new_folder.h"
#include "packaging/new_package.h"
#include "packaging/package_text.h"
#include "platform/file_system.h"
#include "utf8_path.h"

namespace krv::tool {
namespace {

namespace fs = std::filesystem;

constexpr char kFooter[] =
    "Without --from the package has a shader of its own, with remarks that say what to change. A\n"
    "copy of an effect over a built-in figure gets the figure's shader as a file.";

struct NewOptions {
  FileOptions files;
  std::string name;
  std::string from;
};

// The folder of the effect: by its unique name, or named itself. Throws PackagingError.
fs::path FolderOf(const std::string& effect, const std::vector<fs::path>& packages) {
  if (auto folder = host::FindPackageFolder(packages, effect)) return *folder;
  fs::path folder = host::PathFromUtf8(effect);
  if (!folder.has_filename()) folder = folder.parent_path();
  if (host::platform::IsFile(folder / host::kDescriptionFileName)) return folder;
  std::vector<std::string> names;
  for (const fs::path& root : packages) {
    for (const fs::path& package : host::FindPackageFolders(root)) {
      names.push_back(PackageText(package).Text("unique_name"));
    }
  }
  const auto nearest = host::NearestName(effect, names);
  throw PackagingError(
      "--from " + effect + ": there is no such effect" +
      (nearest ? "; did you mean \"" + *nearest + "\"?" : "; `krv list` shows those there are"));
}

// The schema of descriptions, which lies with the packages; empty when it does not.
fs::path SchemaIn(const std::vector<fs::path>& packages) {
  for (const fs::path& folder : packages) {
    fs::path schema = folder / "description.schema.json";
    if (host::platform::IsFile(schema)) return schema;
  }
  return {};
}

NewPackage Make(const NewOptions& options, const fs::path& folder) {
  std::string error;
  const auto found = host::FindFiles(options.files.wishes(), &error);
  if (!found && !options.from.empty()) throw PackagingError(error);
  const std::vector<fs::path> packages = found ? found->packages : std::vector<fs::path>();
  const std::string name = NameOfPackage(folder);
  if (host::FindPackageFolder(packages, name)) {
    throw PackagingError(name + ": there is an effect of this name; give another one");
  }
  const fs::path schema = SchemaIn(packages);
  if (options.from.empty()) return MakeFromTemplate(folder, schema);
  return MakeFromEffect(folder, schema, FolderOf(options.from, packages));
}

// The path as one word of a command line. Double quotes do it in the shells of every platform.
std::string AsOneWord(const fs::path& path) {
  std::string word = host::Utf8(path);
  if (word.find_first_of(" \t&();,!'<>|*?[]{}#$`~^=") == std::string::npos) return word;
  return '"' + word + '"';
}

int New(const NewOptions& options) {
  fs::path folder = host::PathFromUtf8(options.name);
  if (!folder.has_filename()) folder = folder.parent_path();
  try {
    const NewPackage made = Make(options, folder);
    const std::string name = AsOneWord(folder);
    std::printf("Made the effect \"%s\":\n", made.unique_name.c_str());
    for (const fs::path& file : made.files) {
      std::printf("  %s\n", host::Utf8(folder / file).c_str());
    }
    std::printf(
        "Next, change the shader or the description, and look at it:\n"
        "  krv check %s\n"
        "  krv studio %s\n"
        "  krv demo --packages %s --effect %s\n"
        "  krv render clip.mp4 --packages %s --effect %s -o out.mp4\n",
        name.c_str(), name.c_str(), name.c_str(), made.unique_name.c_str(), name.c_str(),
        made.unique_name.c_str());
  } catch (const PackagingError& error) {
    return UsageError(error.what());
  }
  return kExitOk;
}

}  // namespace

void AddNewCommand(CLI::App& app, Action* action) {
  CLI::App* command = app.add_subcommand("new", "Makes a package of your own to begin with");
  auto options = std::make_shared<NewOptions>();
  command->add_option("NAME", options->name, "The folder to make; its name becomes the effect's")
      ->required();
  command->add_option("--from", options->from,
                      "Copies this effect: its unique name, or its package's folder");
  options->files.AddPlugin(*command);
  options->files.AddPackages(*command);
  command->footer(kFooter);
  command->callback([options, action] { *action = [options] { return New(*options); }; });
}

}  // namespace krv::tool
