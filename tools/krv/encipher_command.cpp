#include "encipher_command.h"

#include <CLI/CLI.hpp>
#include <cstdio>

#include "packaging/enciphered_copy.h"
#include "packaging/new_folder.h"
#include "platform/file_system.h"
#include "utf8_path.h"

namespace krv::tool {
namespace {

constexpr char kFooter[] =
    "The copy draws what the original draws; its files are unreadable without the plug-in. The "
    "key\n"
    "is inside the plug-in, so this keeps shaders from casual reading and does not protect them.\n"
    "Files that the description does not name are copied as they are: leave drafts out.";

struct EncipherOptions {
  std::string package;
  std::string output;
};

namespace fs = std::filesystem;

// Beside the package, also when that is "." or "..".
fs::path DefaultOutput(const fs::path& package) {
  const bool plain = package.filename() != "." && package.filename() != "..";
  fs::path output = plain ? package : PlainPath(package);
  output += "-enciphered";
  return output;
}

int Encipher(const EncipherOptions& options) {
  fs::path package = host::PathFromUtf8(options.package);
  if (!package.has_filename()) package = package.parent_path();
  if (!host::platform::IsFolder(package)) {
    return UsageError(options.package + ": there is no such package folder");
  }
  fs::path output =
      options.output.empty() ? DefaultOutput(package) : host::PathFromUtf8(options.output);
  if (!output.has_filename()) output = output.parent_path();
  try {
    const auto files = MakeEncipheredCopy(package, output);
    for (const fs::path& file : files) {
      std::printf("enciphered %s\n", host::Utf8(output / file).c_str());
    }
  } catch (const PackagingError& error) {
    return UsageError(error.what());
  }
  return kExitOk;
}

}  // namespace

void AddEncipherCommand(CLI::App& app, Action* action) {
  CLI::App* command =
      app.add_subcommand("encipher", "Copies a package with its shaders enciphered");
  auto options = std::make_shared<EncipherOptions>();
  command->add_option("PACKAGE", options->package, "The package's folder")->required();
  command->add_option("-o,--output", options->output,
                      "The folder to make (default: PACKAGE-enciphered)");
  command->footer(kFooter);
  command->callback([options, action] { *action = [options] { return Encipher(*options); }; });
}

}  // namespace krv::tool
