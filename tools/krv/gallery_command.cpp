#include "gallery_command.h"

#include <CLI/CLI.hpp>
#include <chrono>
#include <cstdio>
#include <exception>

#include "check/package_check.h"
#include "effect_session.h"
#include "gallery/effect_preview.h"
#include "gallery/gallery_clip.h"
#include "gallery/gallery_writer.h"
#include "media/media_error.h"
#include "package_files.h"
#include "progress.h"
#include "registered_effects.h"
#include "render_interrupt.h"
#include "render_loop.h"
#include "temporary_folder.h"
#include "utf8_path.h"

namespace krv::tool {
namespace {

namespace fs = std::filesystem;
using host::EffectListing;

constexpr char kFooter[] =
    "Writes DIR/index.html, which holds all its pictures and films and loads nothing else, and\n"
    "DIR/contact_sheet.png. Effects are shown over the loudest three seconds of the input, each\n"
    "with its default values. Packages in which `krv check` finds an error are left out.";

struct GalleryOptions {
  FileOptions files;
  std::vector<std::string> inputs;
  std::string folder = "gallery";
};

GalleryClip MakeClip(const std::vector<std::string>& inputs) {
  if (inputs.empty()) return MakeDemoGalleryClip();
  std::vector<fs::path> paths;
  paths.reserve(inputs.size());
  for (const std::string& input : inputs) paths.push_back(host::PathFromUtf8(input));
  return LoadGalleryClip(paths);
}

// Renders effect after effect over one clip.
class GalleryMaker {
 public:
  // `plugin` has the packages of the folders registered. Throws MediaError.
  GalleryMaker(std::shared_ptr<host::PluginHost> plugin, std::vector<fs::path> packages,
               const GalleryOptions& options)
      : plugin_(std::move(plugin)),
        packages_(std::move(packages)),
        checker_(plugin_),
        writer_(host::PathFromUtf8(options.folder)),
        clip_(MakeClip(options.inputs)) {
    std::string error;
    scratch_ = host::TemporaryFolder::Create(&error);
    if (scratch_ == nullptr) throw host::MediaError(error);
  }

  // Adds every effect that renders and complains about the others; `complete` says whether there
  // was a complaint already. Returns the exit code. Throws MediaError when the gallery cannot be
  // written.
  int Make(const std::vector<EffectListing>& effects, bool complete);

 private:
  // Nothing when the effect's package is sound.
  std::optional<std::string> WhatIsWrong(const EffectListing& effect);

  // Throws MediaError and EffectError.
  void Add(const EffectListing& effect);

  // False when the user wants to stop.
  bool ShowFrame();

  int Finish(bool complete) const;

  InterruptWatch watch_;  // first: from here on Ctrl-C ends the program in order
  std::shared_ptr<host::PluginHost> plugin_;
  std::vector<fs::path> packages_;
  PackageChecker checker_;
  GalleryWriter writer_;
  GalleryClip clip_;
  std::unique_ptr<host::TemporaryFolder> scratch_;
  std::optional<Progress> progress_;
  int64_t frames_done_ = 0;
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

std::optional<std::string> GalleryMaker::WhatIsWrong(const EffectListing& effect) {
  const auto folder = host::FindPackageFolder(packages_, effect.unique_name);
  if (!folder) return effect.unique_name + ": its package is not under the given folders";
  std::string first;
  size_t count = 0;
  for (const Finding& finding : checker_.Check(*folder)) {
    if (finding.severity == Severity::kError && count++ == 0) first = ToText(finding);
  }
  if (count == 0) return std::nullopt;
  if (count > 1) first += " (and " + std::to_string(count - 1) + " more)";
  return first;
}

bool GalleryMaker::ShowFrame() {
  progress_->Show(++frames_done_);
  return !watch_.interrupted();
}

void GalleryMaker::Add(const EffectListing& effect) {
  std::string error;
  if (const auto wrong = WhatIsWrong(effect)) throw EffectError(*wrong);
  const auto session = host::EffectSession::Create(plugin_, effect.unique_name, &error);
  if (session == nullptr) throw EffectError(error);
  auto preview = RenderPreview(&clip_, session.get(), scratch_->path() / "preview.webm",
                               [this] { return ShowFrame(); });
  if (preview) writer_.Add(effect, std::move(preview->still), std::move(preview->film));
}

int GalleryMaker::Make(const std::vector<EffectListing>& effects, bool complete) {
  const auto frames = static_cast<int64_t>(clip_.frames.size());
  progress_.emplace(frames * static_cast<int64_t>(effects.size()));
  for (size_t i = 0; i < effects.size() && !watch_.interrupted(); ++i) {
    try {
      Add(effects[i]);
    } catch (const std::exception& failure) {
      progress_->Clear();
      Complain(failure.what());
      complete = false;
    }
    frames_done_ = static_cast<int64_t>(i + 1) * frames;
  }
  progress_.reset();
  if (watch_.interrupted()) {
    Complain("interrupted; no gallery is written");
    return kExitInterrupted;
  }
  return Finish(complete);
}

int GalleryMaker::Finish(bool complete) const {
  if (writer_.size() == 0) return kExitFound;
  writer_.Finish();
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start_;
  char numbers[80];
  std::snprintf(numbers, sizeof numbers, "%zu effect%s in %.0f s: ", writer_.size(),
                writer_.size() == 1 ? "" : "s", time.count());
  Complain(numbers + host::Utf8(writer_.page()));
  return complete ? kExitOk : kExitFound;
}

int Gallery(const GalleryOptions& options) {
  std::string error;
  const auto files = host::FindFiles(options.files.wishes(), &error);
  if (!files) return UsageError(error);
  const auto plugin = host::PluginHost::Create({.plugin = files->plugin}, &error);
  if (plugin == nullptr || !plugin->MakeContextCurrent(&error)) return UsageError(error);
  bool complete = true;
  const auto effects = RegisterEffects(plugin.get(), files->packages, &complete);
  if (effects.empty()) return kExitUsage;
  GalleryMaker maker(plugin, files->packages, options);
  try {
    return maker.Make(effects, complete);
  } catch (const std::exception& failure) {
    Complain(failure.what());
    return kExitFound;
  }
}

}  // namespace

void AddGalleryCommand(CLI::App& app, Action* action) {
  CLI::App* command =
      app.add_subcommand("gallery", "Shows every effect, moving, on one page for a browser");
  auto options = std::make_shared<GalleryOptions>();
  command->add_option("INPUT", options->inputs,
                      "A video with sound, or sound alone (default: a clip of its own)");
  command->add_option("-o,--output", options->folder, "The folder DIR to write (default: gallery)");
  options->files.AddPlugin(*command);
  options->files.AddPackages(*command);
  command->footer(kFooter);
  command->callback([options, action] {
    *action = [options] {
      host::SilenceAvLog();
      return Gallery(*options);
    };
  });
}

}  // namespace krv::tool
