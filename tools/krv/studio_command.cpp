#include "studio_command.h"

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "media/media_error.h"
#include "package_files.h"
#include "platform/file_system.h"
#include "render_options.h"
#include "utf8_path.h"
#ifdef KRV_STUDIO
#include "studio/clip.h"
#include "studio/studio_window.h"
#endif

namespace krv::tool {
namespace {

constexpr char kFooter[] =
    "Without MEDIA the demo clip plays. Saving a shader or the description loads the package "
    "anew;\n"
    "while it has errors, the last version that works stays, with the errors beside it.\n"
    "Keys: Space plays and pauses, the arrows step a frame, with Shift a second and with Ctrl to "
    "a\n"
    "keyframe, Home and End go to the ends, L loops, M mutes, T changes the theme, Ctrl+S saves "
    "the\n"
    "values as defaults, Ctrl+Shift+S the keyframes, Ctrl+E exports, Ctrl+Q closes.";

struct StudioOptions {
  RenderArguments media;
  std::string package = "audio_visualization_bars";
  std::string theme = "dark";
  float scale = 0;
};

#ifdef KRV_STUDIO

// The folder of a package: named itself, by its description, or by the effect's unique name.
std::optional<std::filesystem::path> PackageFolder(const std::string& wish,
                                                   const host::FoundFiles& files,
                                                   std::string* error) {
  std::filesystem::path path = host::PathFromUtf8(wish);
  if (path.filename() == host::kDescriptionFileName) path = path.parent_path();
  if (path.empty()) path = ".";
  if (!path.has_filename()) path = path.parent_path();
  if (host::platform::IsFile(path / host::kDescriptionFileName)) return path;
  const bool is_folder = host::platform::IsFolder(path);
  auto found = is_folder ? std::nullopt : host::FindPackageFolder(files.packages, wish);
  if (found) return found;
  *error = wish + (is_folder ? ": there is no " + std::string(host::kDescriptionFileName) +
                                   " in this folder"
                             : ": there is no such package folder or effect");
  return std::nullopt;
}

std::unique_ptr<studio::Clip> ClipFor(const StudioOptions& options) {
  return options.media.inputs.empty() ? studio::MakeDemoClip() : studio::OpenClip(options.media);
}

int RunStudio(const StudioOptions& options) {
  host::SilenceAvLog();
  std::string error;
  if (options.theme != "dark" && options.theme != "light") {
    return UsageError("--theme " + options.theme + ": give dark or light");
  }
  if (options.scale != 0 && !(options.scale >= 0.5f && options.scale <= 4)) {
    return UsageError("--scale: give a factor from 0.5 to 4");
  }
  const auto files = host::FindFiles(options.media.files.wishes(), &error);
  if (!files) return UsageError(error);
  const auto package = PackageFolder(options.package, *files, &error);
  if (!package) return UsageError(error);
  studio::StudioWindow::Options window;
  window.studio.plugin = files->plugin;
  window.studio.package = *package;
  window.studio.keyframes = host::PathFromUtf8(options.media.keyframes);
  window.theme = options.theme == "light" ? studio::Theme::kLight : studio::Theme::kDark;
  window.window.title = "krv studio \xE2\x80\x93 " + host::Utf8(package->filename());
  window.window.scale = options.scale;
  const auto studio = studio::StudioWindow::Create(window, ClipFor(options), &error);
  if (studio == nullptr) return UsageError(error);
  studio->Run();
  return kExitOk;
}

#else

int RunStudio(const StudioOptions&) {
  return UsageError("this build has no studio: it was made without SDL 2 and Dear ImGui");
}

#endif

}  // namespace

void AddStudioCommand(CLI::App& app, Action* action) {
  CLI::App* command =
      app.add_subcommand("studio", "Plays a package in a window, to work on it by hand");
  auto options = std::make_shared<StudioOptions>();
  command->add_option("PACKAGE", options->package,
                      "A package's folder, or an effect's unique name; see krv list (default: "
                      "audio_visualization_bars)");
  command->add_option("MEDIA", options->media.inputs,
                      "A video with sound, or sound alone (default: the demo clip)");
  command->add_option("--background", options->media.background,
                      "Behind sound alone: a colour #RRGGBB or a picture (default: #12141C)");
  command->add_option("--mask", options->media.mask,
                      "A matte, video or picture, for effects that follow a person");
  command->add_option("--params", options->media.keyframes,
                      "A JSON file with the first values, also such as change over time");
  command->add_option("--theme", options->theme, "Colours of the window: dark or light")
      ->capture_default_str();
  command->add_option("--scale", options->scale,
                      "Size of texts and controls (default: what suits the display)");
  options->media.files.AddPlugin(*command);
  options->media.files.AddPackages(*command);
  command->footer(kFooter);
  command->callback([options, action] { *action = [options] { return RunStudio(*options); }; });
}

}  // namespace krv::tool
