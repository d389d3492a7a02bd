#include "demo_command.h"

#include <CLI/CLI.hpp>
#include <cstdio>

#include "demo_clip.h"
#include "media/media_error.h"
#include "platform/file_system.h"
#include "platform/open_file.h"
#include "render_command.h"
#include "render_interrupt.h"
#include "render_options.h"
#include "temporary_folder.h"
#include "utf8_path.h"

namespace krv::tool {
namespace {

namespace fs = std::filesystem;

constexpr host::PictureSize kClipSize = {1280, 720};

struct DemoOptions {
  RenderArguments render;
  std::string clip;
  bool open = false;
};

fs::path AbsolutePath(const std::string& path) {
  return fs::absolute(host::PathFromUtf8(path)).lexically_normal();
}

// Throws MediaError when the clip would take the place of another file.
void CheckClip(const DemoOptions& options) {
  if (options.clip.empty()) return;
  const fs::path clip = host::PathFromUtf8(options.clip);
  if (host::platform::IsFile(clip) || host::platform::IsFolder(clip)) {
    throw host::MediaError("--clip " + options.clip +
                           ": exists already; give another name, or remove it");
  }
  if (AbsolutePath(options.clip) == AbsolutePath(options.render.output)) {
    throw host::MediaError("--clip " + options.clip + ": is the output, too; give another name");
  }
}

// Makes the clip, and renders the effect over it. Returns the exit code.
int MakeMovie(const DemoOptions& options, const fs::path& scratch, const InterruptWatch& watch) {
  // What is wrong is said before the work.
  CheckClip(options);
  const fs::path clip =
      options.clip.empty() ? scratch / "clip.mp4" : host::PathFromUtf8(options.clip);
  RenderArguments arguments = options.render;
  arguments.inputs = {host::Utf8(clip)};
  const RenderOptions understood = ParseRenderOptions(arguments);
  std::string error;
  const auto session = OpenSession(arguments, understood, &error);
  if (session == nullptr) return UsageError(error);
  Complain("making a clip of 12 s with music");
  if (!demo::WriteDemoClip(clip, kClipSize, [&watch] { return !watch.interrupted(); })) {
    Complain("interrupted; nothing is written");
    return kExitInterrupted;
  }
  return Render(arguments, watch, session.get());
}

int Demo(const DemoOptions& options) {
  host::SilenceAvLog();
  const InterruptWatch watch;  // first: from here on Ctrl-C ends the program in order
  std::string error;
  const auto scratch = host::TemporaryFolder::Create(&error);
  if (scratch == nullptr) return UsageError(error);
  const int code = MakeMovie(options, scratch->path(), watch);
  if (code != kExitOk) return code;
  const fs::path movie = AbsolutePath(options.render.output);
  std::printf("Open %s\n", host::Utf8(movie).c_str());
  std::fflush(stdout);
  if (!options.open || OpenFile(movie, &error)) return kExitOk;
  Complain("--open: " + error);
  return kExitFound;
}

}  // namespace

void AddDemoCommand(CLI::App& app, Action* action) {
  CLI::App* command =
      app.add_subcommand("demo", "Makes a clip with music and renders an effect over it");
  auto options = std::make_shared<DemoOptions>();
  options->render.output = "krv-demo.mp4";
  options->render.effect = "audio_visualization_bars";
  command->add_option("-o,--output", options->render.output,
                      "The file to write (default: krv-demo.mp4)");
  command->add_option("--effect", options->render.effect,
                      "The effect's unique name (default: audio_visualization_bars)");
  command->add_option("--clip", options->clip,
                      "Keeps the clip without an effect as this new .mp4 file");
  command->add_flag("--open", options->open, "Opens the result when it is done");
  options->render.files.AddPlugin(*command);
  options->render.files.AddPackages(*command);
  command->callback([options, action] { *action = [options] { return Demo(*options); }; });
}

}  // namespace krv::tool
