#include "bench_command.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <stdexcept>

#include "bench/bench_options.h"
#include "bench/bench_report.h"
#include "bench/bench_run.h"
#include "package_arguments.h"
#include "utf8_path.h"

namespace krv::tool {
namespace {

constexpr char kFooter[] =
    "A frame is measured from the call of the plug-in's slot 3 and 4 until GL has finished; the\n"
    "processor time is that of all threads of this process, those of software GL included.\n"
    "\n"
    "The limit is the least work of the same frame, done by the same GL driver in turn with it:\n"
    "  copy       memory: the input's rows into the output's\n"
    "  upload     memory: the input into a texture, where the first pass reads background_tex or\n"
    "             GL blends\n"
    "  pass1...   a quad of one colour at the effect's size for each pass\n"
    "  read_back  memory: the effect into memory at its own size; the whole frame where GL blends\n"
    "             and with \"original\"\n"
    "  blend      gpu, or where GL blends: a quad of the frame's size that samples two textures\n"
    "In memory GL blends for packages with a blend script, a vertex shader (\"opengl_vert\"), or "
    "a\n"
    "parameter named blend or effect_tex; the plug-in's own code for all others.\n"
    "What the figures themselves compute is no part of it. Its parts are measured one by one, "
    "too,\n"
    "GL being waited for after each: their sum is more than the limit.\n"
    "\n"
    "Stages are wall times of frames of their own, in which the plug-in waits for GL after each\n"
    "stage (KRV_FRAME_TIMES=1).";

int Bench(const BenchArguments& arguments) {
  std::string error;
  const auto settings = ParseBenchSettings(arguments, &error);
  if (!settings) return UsageError(error);
  const auto plugin = host::FindPlugin(arguments.files.wishes().plugin, &error);
  if (!plugin) return UsageError(error);
  const auto packages = PackageFolders(arguments.packages, &error);
  if (!packages) return UsageError(error);
  BenchResult result;
  try {
    result = RunBench(*plugin, *packages, *settings,
                      [](const BenchResult& so_far, const Measurement& measurement) {
                        if (so_far.measurements.size() == 1) {
                          std::printf("%s", BenchHeading(so_far).c_str());
                        }
                        std::printf("\n%s", ToText(measurement).c_str());
                        std::fflush(stdout);
                      });
  } catch (const std::invalid_argument& wrong) {
    return UsageError(wrong.what());
  } catch (const std::exception& failure) {
    Complain(failure.what());
    return kExitFound;
  }
  if (arguments.json.empty()) return kExitOk;
  if (WriteBenchJson(result, host::PathFromUtf8(arguments.json))) return kExitOk;
  return UsageError(arguments.json + ": cannot be written");
}

}  // namespace

void AddBenchCommand(CLI::App& app, Action* action) {
  CLI::App* command =
      app.add_subcommand("bench", "Measures what frames of packages cost, beside the least work");
  auto arguments = std::make_shared<BenchArguments>();
  command->add_option("PACKAGE", arguments->packages, "A package's folder, or a folder of packages")
      ->required();
  command
      ->add_option("--size", arguments->sizes,
                   "720p, 1080p, 2160p or WIDTHxHEIGHT; may be given several times (default: the "
                   "three)")
      ->allow_extra_args(false);
  command
      ->add_option("--form", arguments->forms,
                   "Frames in memory or in gpu textures; may be given twice (default: both)")
      ->allow_extra_args(false);
  command->add_option("--quality", arguments->quality,
                      "low, medium or high instead of the packages' own");
  command
      ->add_option("--param", arguments->parameters,
                   "A parameter's value, name=value; may be given several times")
      ->allow_extra_args(false);
  command->add_option("--frames", arguments->frames, "Frames of a round")
      ->check(CLI::Range(1, 100000))
      ->capture_default_str();
  command->add_option("--rounds", arguments->rounds, "Rounds")
      ->check(CLI::Range(1, 10000))
      ->capture_default_str();
  command
      ->add_option("--instances", arguments->instances,
                   "Instances of each effect, which take turns")
      ->check(CLI::Range(1, 64))
      ->capture_default_str();
  command->add_option("--json", arguments->json, "Writes everything to a JSON file");
  arguments->files.AddPlugin(*command);
  command->footer(kFooter);
  command->callback([arguments, action] { *action = [arguments] { return Bench(*arguments); }; });
}

}  // namespace krv::tool
