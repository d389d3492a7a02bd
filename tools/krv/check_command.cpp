#include "check_command.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "check/package_check.h"
#include "package_arguments.h"
#include "plugin_host.h"
#include "render_interrupt.h"
#include "utf8_path.h"

namespace krv::tool {
namespace {

struct CheckOptions {
  FileOptions files;
  std::vector<std::string> packages;
  bool gpu = false;
  bool json = false;
};

struct PackageResult {
  std::filesystem::path folder;
  Findings findings;
};

nlohmann::ordered_json ToJson(const Finding& finding) {
  return {{"severity", finding.severity == Severity::kError ? "error" : "warning"},
          {"file", finding.file},
          {"line", finding.line},
          {"column", finding.column},
          {"pointer", finding.pointer},
          {"message", finding.message}};
}

void PrintJson(const std::vector<PackageResult>& results) {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const PackageResult& result : results) {
    nlohmann::ordered_json findings = nlohmann::ordered_json::array();
    for (const Finding& finding : result.findings) findings.push_back(ToJson(finding));
    list.push_back({{"package", host::Utf8(result.folder)},
                    {"ok", !HasErrors(result.findings)},
                    {"findings", std::move(findings)}});
  }
  const std::string text =
      list.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
  std::printf("%s\n", text.c_str());
}

void PrintText(const PackageResult& result) {
  for (const Finding& finding : result.findings) std::printf("%s\n", ToText(finding).c_str());
  if (!HasErrors(result.findings)) std::printf("%s: ok\n", host::Utf8(result.folder).c_str());
}

int Check(const CheckOptions& options) {
  const InterruptWatch watch;  // the copies that are tried are removed
  std::string error;
  const auto plugin_file = host::FindPlugin(options.files.wishes().plugin, &error);
  if (!plugin_file) return UsageError(error);
  const auto folders = PackageFolders(options.packages, &error);
  if (!folders) return UsageError(error);
  const auto plugin = host::PluginHost::Create(
      {.plugin = *plugin_file,
       .device = options.gpu ? host::DeviceUse::kGpu : host::DeviceUse::kMemory},
      &error);
  if (plugin == nullptr || !plugin->MakeContextCurrent(&error)) return UsageError(error);
  PackageChecker checker(plugin);
  std::vector<PackageResult> results;
  bool found = false;
  for (const std::filesystem::path& folder : *folders) {
    if (watch.interrupted()) {
      Complain("interrupted after " + std::to_string(results.size()) + " of " +
               std::to_string(folders->size()) + " packages");
      return kExitInterrupted;
    }
    results.push_back({folder, checker.Check(folder)});
    found = found || HasErrors(results.back().findings);
    if (!options.json) PrintText(results.back());
  }
  if (options.json) PrintJson(results);
  return found ? kExitFound : kExitOk;
}

}  // namespace

void AddCheckCommand(CLI::App& app, Action* action) {
  CLI::App* command =
      app.add_subcommand("check", "Says what is wrong with packages: file, line, key and reason");
  auto options = std::make_shared<CheckOptions>();
  command->add_option("PACKAGE", options->packages, "A package's folder, or a folder of packages")
      ->required();
  options->files.AddPlugin(*command);
  command->add_flag("--gpu", options->gpu, "Renders in textures instead of memory");
  command->add_flag("--json", options->json, "Prints JSON");
  command->callback([options, action] { *action = [options] { return Check(*options); }; });
}

}  // namespace krv::tool
