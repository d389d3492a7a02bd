#include "render_command.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <optional>
#include <string>

#include "effect_session.h"
#include "keyframes/keyframe_reader.h"
#include "media/media_error.h"
#include "progress.h"
#include "render_interrupt.h"
#include "render_loop.h"
#include "render_options.h"
#include "render_output.h"

namespace krv::tool {
namespace {

constexpr char kFooter[] =
    "Output by the name's ending:\n"
    "  .mp4 .mkv     H.264 with the original sound; odd sides gain a column or row\n"
    "  .mov          H.264; with --transparent ProRes 4444 with alpha\n"
    "  .webm         VP9; with --transparent with alpha\n"
    "  NAME%05d.png  one picture per frame with alpha, numbered by frame; no sound\n"
    "  FOLDER/       the same as FOLDER/frame_%06d.png\n"
    "  .raw          bare frames from the top row on, a pixel blue, green, red, alpha; no sound\n"
    "  -             the same to standard output, for another program\n"
    "Sound that the container does not take, and that of --frames, becomes AAC or Opus.\n"
    "A second input with sound alone replaces the video's own.\n"
    "The file of --params gives values, or keys between which they move in time, by parameter:\n"
    "  {\"glow_intensity\": [{\"time\": 0, \"value\": 0.1}, {\"time\": 2.5, \"value\": 0.8}]}\n"
    "Where --param gives a value, too, that one counts.";

// The keyframes of --params, none without it. Complains and returns nothing when they do not fit.
std::optional<ParameterTracks> LoadKeyframes(const RenderOptions& options, const RenderInput& input,
                                             const host::EffectListing& effect) {
  if (options.keyframes.empty()) return ParameterTracks();
  Findings findings;
  auto tracks = ReadKeyframes(options.keyframes, effect, input.video().rate, &findings);
  for (const Finding& finding : findings) Complain(ToText(finding));
  return tracks;
}

// What goes wrong from the first frame on is no longer the user's doing.
int RenderInto(const RenderOptions& options, const InterruptWatch& watch, RenderInput* input,
               host::EffectSession* session) {
  const auto sink = MakeOutput(options, *input);
  RenderLoop loop(input, session, sink.get());
  RenderResult result;
  try {
    Progress progress(input->ExpectedFrames());
    result = loop.Run([&watch] { return watch.interrupted(); },
                      [&progress](int64_t frames) { progress.Show(frames); });
    if (result.frames > 0 && !options.report.empty()) {
      WriteReport(result, options, *input, session->host().ContextDescription());
    }
  } catch (const std::exception& failure) {
    Complain(failure.what());
    return kExitFound;
  }
  if (result.frames == 0) {
    return UsageError("--frames: the input has no frame " + std::to_string(options.frames.first));
  }
  Complain(Summary(result, options.output));
  return result.interrupted ? kExitInterrupted : kExitOk;
}

void AddInputOptions(CLI::App& command, RenderArguments* arguments) {
  command.add_option("INPUT", arguments->inputs, "A video with sound, or sound alone")->required();
  command.add_option("--background", arguments->background,
                     "Behind sound alone: a colour #RRGGBB or a picture (default: #12141C)");
  command.add_option("--mask", arguments->mask,
                     "A matte, video or picture, for effects that follow a person: white, or "
                     "opaque where it has transparency, is the person");
  command.add_option("--size", arguments->size,
                     "Of the background, WIDTHxHEIGHT (default: the picture's, or 1920x1080)");
  command.add_option("--fps", arguments->rate,
                     "Frames per second, as 30, 29.97 or 30000/1001 (default: the video's, or 30)");
  command.add_option("--frames", arguments->frames,
                     "Renders only A:B, the frames from A up to but not including B");
}

void AddOutputOptions(CLI::App& command, RenderArguments* arguments) {
  command.add_option("-o,--output", arguments->output, "The file to write")->required();
  command.add_flag("--transparent", arguments->transparent,
                   "The figure alone, with straight alpha");
  command.add_option("--crf", arguments->crf,
                     "Quality of H.264 and VP9, 0 best to 51 (default: 18 and 24)");
  command.add_option("--preset", arguments->preset,
                     "Speed of H.264, ultrafast to veryslow (default: veryfast)");
  command.add_option(
      "--report", arguments->report,
      "Writes frames, times per stage (they overlap) and the renderer to a JSON file");
}

// Returns the exit code.
int RenderOver(const RenderArguments& arguments, const RenderOptions& options,
               const InterruptWatch& watch, RenderInput* input, host::EffectSession* session) {
  if (!options.mask.empty() && !session->WantsPersonMask()) {
    return UsageError("--mask: effect \"" + arguments.effect + "\" follows nobody");
  }
  const auto tracks = LoadKeyframes(options, *input, session->effect());
  if (!tracks) return kExitUsage;
  const LayeredValues values(&session->parameters(), &*tracks);
  session->SetParameterSource(&values);
  const int code = RenderInto(options, watch, input, session);
  session->SetParameterSource(nullptr);
  return code;
}

int RenderCommand(const RenderArguments& arguments) {
  const RenderOptions options = ParseRenderOptions(arguments);
  RenderInput input(options);
  std::string error;
  const auto session = OpenSession(arguments, options, &error);
  if (session == nullptr) return UsageError(error);
  const InterruptWatch watch;
  return RenderOver(arguments, options, watch, &input, session.get());
}

}  // namespace

std::unique_ptr<host::EffectSession> OpenSession(const RenderArguments& arguments,
                                                 const RenderOptions& options, std::string* error) {
  const auto files = host::FindFiles(arguments.files.wishes(), error);
  if (!files) return nullptr;
  host::SessionOptions wishes;
  wishes.plugin = files->plugin;
  wishes.packages = files->packages;
  wishes.unique_name = arguments.effect;
  wishes.device = options.device;
  wishes.without_blend = options.transparent;
  auto session = host::EffectSession::Create(wishes, error);
  if (session == nullptr) return nullptr;
  for (const std::string& assignment : arguments.parameters) {
    if (!session->parameters().Assign(session->effect(), assignment, error)) return nullptr;
  }
  return session;
}

int Render(const RenderArguments& arguments, const InterruptWatch& watch,
           host::EffectSession* session) {
  const RenderOptions options = ParseRenderOptions(arguments);
  RenderInput input(options);
  return RenderOver(arguments, options, watch, &input, session);
}

void AddRenderCommand(CLI::App& app, Action* action) {
  CLI::App* command = app.add_subcommand("render", "Renders an effect over a video or over sound");
  auto arguments = std::make_shared<RenderArguments>();
  AddInputOptions(*command, arguments.get());
  command->add_option("--effect", arguments->effect, "The effect's unique name; see krv list")
      ->required();
  command
      ->add_option("--param", arguments->parameters,
                   "A parameter's value, name=value; may be given several times")
      ->allow_extra_args(false);
  command->add_option("--params", arguments->keyframes,
                      "A JSON file of parameters' values, also such as change over time");
  AddOutputOptions(*command, arguments.get());
  command->add_option("--device", arguments->device,
                      "Hands frames over in memory or in gpu textures (default: memory)");
  arguments->files.AddPlugin(*command);
  arguments->files.AddPackages(*command);
  command->footer(kFooter);
  command->callback([arguments, action] {
    *action = [arguments] {
      host::SilenceAvLog();
      return RenderCommand(*arguments);
    };
  });
}

}  // namespace krv::tool
