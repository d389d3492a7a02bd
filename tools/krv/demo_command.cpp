#include "demo_command.h"

#include <CLI/CLI.hpp>
#include <cstdio>

#include "demo_clip.h"
#include "media/media_error.h"
#include "platform/open_file.h"
#include "render_command.h"
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

int Demo(const DemoOptions& options) {
  host::SilenceAvLog();
  std::string error;
  const auto scratch = host::TemporaryFolder::Create(&error);
  if (scratch == nullptr) return UsageError(error);
  const fs::path clip =
      options.clip.empty() ? scratch->path() / "clip.mp4" : host::PathFromUtf8(options.clip);
  RenderArguments arguments = options.render;
  arguments.inputs = {host::Utf8(clip)};
  ParseRenderOptions(arguments);  // says what is wrong before the work
  Complain("making a clip of 12 s with music");
  demo::WriteDemoClip(clip, kClipSize);
  const int code = Render(arguments);
  if (code != kExitOk) return code;
  const fs::path movie = fs::absolute(host::PathFromUtf8(arguments.output)).lexically_normal();
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
                      "Keeps the clip without an effect as this .mp4 file");
  command->add_flag("--open", options->open, "Opens the result when it is done");
  options->render.files.AddPlugin(*command);
  options->render.files.AddPackages(*command);
  command->callback([options, action] { *action = [options] { return Demo(*options); }; });
}

}  // namespace krv::tool
