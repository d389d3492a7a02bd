#include "validate_command.h"

#include <CLI/CLI.hpp>
#include <cstdio>

#include "nearest_name.h"
#include "platform/file_system.h"
#include "temporary_folder.h"
#include "utf8_path.h"
#include "validate/check.h"
#include "validate/check_runner.h"
#include "validate/validate_report.h"

namespace krv::tool {
namespace {

using Clock = std::chrono::steady_clock;

struct ValidateOptions {
  std::string plugin;
  FileOptions files;  // packages only
  int strictness = 5;
  std::string report;
  std::vector<std::string> only;  // names of tests; empty: all
  int time_limit = 0;             // seconds; 0: by strictness
  bool list = false;
  // Of the process of one test.
  std::string run_check;
  std::string journal;
};

constexpr char kLevels[] =
    "Each test runs in a process of its own: crashes and hangs are reported. Strictness:\n"
    "   1  the contract of every call, in seconds\n"
    "   3  what careless hosts do: missing services, sizes, types, strides, times, lost contexts\n"
    "   5  what hostile hosts do: values of no sense, threads, damaged packages; about a minute\n"
    "   8  frames up to 8192 x 8192, longer lives\n"
    "  10  every effect, every byte of a package: some minutes, before a release\n"
    "Exit code 0: no test failed; 1: some did; 2: nothing could be tested.";

// The plug-in's packages: those named, or beside the plug-in or the program. Maybe none.
std::optional<std::vector<std::filesystem::path>> Packages(const ValidateOptions& options,
                                                           const std::filesystem::path& plugin,
                                                           std::string* error) {
  host::FileWishes wishes = options.files.wishes();
  wishes.plugin = plugin;
  const bool named = !wishes.packages.empty();
  std::string ignored;
  auto found = host::FindFiles(wishes, plugin.parent_path(), named ? error : &ignored);
  if (!found && !named) found = host::FindFiles(wishes, error);
  if (!found) return std::nullopt;
  return found->packages;
}

std::optional<BenchOptions> FindBench(const ValidateOptions& options, std::string* error) {
  std::error_code code;
  const auto plugin = std::filesystem::absolute(host::PathFromUtf8(options.plugin), code);
  if (!host::platform::IsFile(plugin)) {
    *error = options.plugin + ": there is no such file";
    return std::nullopt;
  }
  const auto packages = Packages(options, plugin, error);
  if (!packages) return std::nullopt;
  return BenchOptions{plugin, *packages, options.strictness};
}

std::chrono::milliseconds TimeLimit(const ValidateOptions& options) {
  if (options.time_limit > 0) return std::chrono::seconds(options.time_limit);
  return std::chrono::seconds(options.strictness <= kThorough ? 120 : 1200);
}

// The tests to run, or nothing when there is none of a name.
std::optional<std::vector<const Check*>> Chosen(const ValidateOptions& options,
                                                std::string* error) {
  std::vector<const Check*> chosen;
  std::vector<std::string> names;
  for (const Check& check : AllChecks()) {
    names.emplace_back(check.name);
    if (options.only.empty() && check.strictness <= options.strictness) chosen.push_back(&check);
  }
  for (const std::string& name : options.only) {
    const Check* const check = FindCheck(name);
    if (check != nullptr) {
      chosen.push_back(check);
      continue;
    }
    const auto nearest = host::NearestName(name, names);
    *error = "there is no test \"" + name + "\"" +
             (nearest ? "; did you mean \"" + *nearest + "\"?" : "; --list shows those there are");
    return std::nullopt;
  }
  return chosen;
}

int List() {
  for (const Check& check : AllChecks()) {
    std::printf("%2d  %-32s  %s\n", check.strictness, check.name, check.demand);
  }
  return kExitOk;
}

Validation RunAll(const std::vector<const Check*>& checks, const BenchOptions& bench,
                  std::chrono::milliseconds limit, const std::filesystem::path& scratch) {
  const auto start = Clock::now();
  Validation validation{bench, {}, 0};
  for (const Check* check : checks) {
    validation.results.push_back(RunInChild(*check, bench, limit, scratch));
    const CheckResult& result = validation.results.back();
    std::printf("%s", ToText(result).c_str());
    std::fflush(stdout);
    // The first one of all: without it there is nothing to test.
    if (check == AllChecks().data() && result.outcome != Outcome::kPassed) break;
  }
  validation.seconds = std::chrono::duration<double>(Clock::now() - start).count();
  return validation;
}

int Validate(const ValidateOptions& options) {
  if (options.list) return List();
  if (options.plugin.empty()) return UsageError("PLUGIN is required");
  std::string error;
  const auto bench = FindBench(options, &error);
  if (!bench) return UsageError(error);
  const auto checks = Chosen(options, &error);
  if (!checks) return UsageError(error);
  const auto scratch = host::TemporaryFolder::Create(&error);
  if (scratch == nullptr) return UsageError(error);
  const Validation validation = RunAll(*checks, *bench, TimeLimit(options), scratch->path());
  std::printf("%s", Summary(validation).c_str());
  if (!options.report.empty() && !WriteReport(validation, host::PathFromUtf8(options.report))) {
    return UsageError(options.report + ": cannot be written");
  }
  return validation.Failures() == 0 ? kExitOk : kExitFound;
}

// In the process of one test.
int RunOne(const ValidateOptions& options) {
  const Check* const check = FindCheck(options.run_check);
  if (check == nullptr) return UsageError("there is no test \"" + options.run_check + "\"");
  BenchOptions bench{host::PathFromUtf8(options.plugin), options.files.wishes().packages,
                     options.strictness};
  return RunHere(*check, bench, host::PathFromUtf8(options.journal));
}

}  // namespace

void AddValidateCommand(CLI::App& app, Action* action) {
  CLI::App* command = app.add_subcommand("validate", "Tries a plug-in as a hostile host would");
  command->footer(kLevels);
  auto options = std::make_shared<ValidateOptions>();
  command->add_option("PLUGIN", options->plugin, "The plug-in's file");
  options->files.AddPackages(*command);
  command->add_option("--strictness", options->strictness, "1 to 10, see below")
      ->check(CLI::Range(1, 10))
      ->capture_default_str();
  command->add_option("--report", options->report, "Writes what was found to a JSON file");
  command->add_option("--test", options->only, "This test only; may be given several times")
      ->allow_extra_args(false);
  command
      ->add_option("--time-limit", options->time_limit,
                   "Seconds after which a test counts as hung (default: 120, above strictness 5 "
                   "1200)")
      ->check(CLI::PositiveNumber);
  command->add_flag("--list", options->list, "Shows all tests with their strictness");
  constexpr char kHidden[] = "";
  command->add_option(kRunCheckOption, options->run_check)->group(kHidden);
  command->add_option(kJournalOption, options->journal)->group(kHidden);
  command->callback([options, action] {
    *action = [options] {
      return options->run_check.empty() ? Validate(*options) : RunOne(*options);
    };
  });
}

}  // namespace krv::tool
