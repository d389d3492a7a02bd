#include "render_options.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <system_error>

#include "media/media_error.h"
#include "platform/file_system.h"
#include "platform/terminal.h"
#include "utf8_path.h"

namespace krv::tool {
namespace {

namespace fs = std::filesystem;
using host::MediaError;

constexpr int kLongestSide = 16384;  // pixels; what H.264 and OpenGL drivers take
constexpr int64_t kLastFrame = int64_t{1} << 40;
constexpr std::string_view kPresets[] = {"ultrafast", "superfast", "veryfast", "faster",  "fast",
                                         "medium",    "slow",      "slower",   "veryslow"};

// Digits only, nothing for other texts and numbers above `most`.
std::optional<int64_t> ParseNumber(std::string_view text, int64_t most, int base = 10) {
  int64_t number = 0;
  const char* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, number, base);
  if (text.empty() || text.front() == '-' || error != std::errc() || rest != end) return {};
  if (number > most) return {};
  return number;
}

FrameRange ParseFrames(const std::string& text) {
  if (text.empty()) return {};
  const size_t colon = text.find(':');
  const std::string_view view = text;
  if (colon != std::string::npos) {
    const std::string_view first = view.substr(0, colon);
    const std::string_view end = view.substr(colon + 1);
    FrameRange range;
    const auto first_number = first.empty() ? int64_t{0} : ParseNumber(first, kLastFrame);
    if (!end.empty()) range.end = ParseNumber(end, kLastFrame);
    range.first = first_number.value_or(0);
    const bool understood = first_number && (end.empty() || range.end);
    if (understood && (!range.end || range.first < *range.end)) return range;
  }
  throw MediaError("--frames " + text +
                   ": give A:B, the frames from A up to but not including B, counted from 0");
}

std::optional<host::PictureSize> ParseSize(const std::string& text) {
  if (text.empty()) return {};
  const std::string_view view = text;
  const size_t cross = view.find('x');
  if (cross != std::string_view::npos) {
    const auto width = ParseNumber(view.substr(0, cross), kLongestSide);
    const auto height = ParseNumber(view.substr(cross + 1), kLongestSide);
    if (width.value_or(0) >= 16 && height.value_or(0) >= 16) {
      return host::PictureSize{static_cast<int>(*width), static_cast<int>(*height)};
    }
  }
  throw MediaError("--size " + text + ": give WIDTHxHEIGHT in pixels, from 16x16 to 16384x16384");
}

std::optional<host::FrameRate> ParseRate(const std::string& text) {
  if (text.empty()) return {};
  const auto rate = host::ParseFrameRate(text);
  if (rate) return rate;
  throw MediaError("--fps " + text + ": give frames per second such as 30, 29.97 or 30000/1001");
}

void ParseBackground(const std::string& text, RenderOptions* options) {
  options->background_given = !text.empty();
  if (text.empty()) return;
  if (text.front() != '#') {
    options->background_picture = host::PathFromUtf8(text);
    return;
  }
  const auto colour = ParseNumber(std::string_view(text).substr(1), 0xFFFFFF, 16);
  if (text.size() != 7 || !colour) {
    throw MediaError("--background " + text + ": give a colour as #RRGGBB or a picture file");
  }
  options->background_colour = {static_cast<uint8_t>(*colour >> 16),
                                static_cast<uint8_t>(*colour >> 8), static_cast<uint8_t>(*colour)};
}

void ParseQuality(const RenderArguments& arguments, RenderOptions* options) {
  if (std::find(std::begin(kPresets), std::end(kPresets), arguments.preset) == std::end(kPresets)) {
    throw MediaError("--preset " + arguments.preset +
                     ": give one of ultrafast, superfast, veryfast, faster, fast, medium, slow, "
                     "slower, veryslow");
  }
  if (arguments.crf && (*arguments.crf < 0 || *arguments.crf > 51)) {
    throw MediaError("--crf " + std::to_string(*arguments.crf) + ": give a number from 0 to 51");
  }
  options->quality.preset = arguments.preset;
  options->quality.crf = arguments.crf;
}

host::DeviceUse ParseDevice(const std::string& text) {
  if (text == "memory") return host::DeviceUse::kMemory;
  if (text == "gpu") return host::DeviceUse::kGpu;
  throw MediaError("--device " + text + ": give memory or gpu");
}

// Found out before hours of rendering, not after.
void CheckFolderOf(const fs::path& file) {
  const fs::path path = file.has_filename() ? file : file.parent_path();
  const fs::path folder = path.parent_path();
  if (!folder.empty() && !host::platform::IsFolder(folder)) {
    throw MediaError(host::Utf8(file) + ": there is no folder " + host::Utf8(folder));
  }
  if (file.has_filename() && host::platform::IsFolder(file)) {
    throw MediaError(host::Utf8(file) + ": is a folder");
  }
}

void CheckFiles(const RenderOptions& options) {
  if (options.format.kind == host::OutputKind::kRawStream) {
    if (OutputIsTerminal()) {
      throw MediaError("-o -: standard output is a terminal; lead it into a file or a program");
    }
  } else {
    CheckFolderOf(options.output);
  }
  if (!options.report.empty()) {
    if (!options.report.has_filename()) {
      throw MediaError(host::Utf8(options.report) + ": is a folder");
    }
    CheckFolderOf(options.report);
  }
  std::vector<fs::path> inputs = options.inputs;
  inputs.push_back(options.mask);
  inputs.push_back(options.keyframes);
  for (const fs::path& input : inputs) {
    if (host::platform::IsSameFile(input, options.output)) {
      throw MediaError(host::Utf8(options.output) + ": is an input, too");
    }
  }
}

}  // namespace

RenderOptions ParseRenderOptions(const RenderArguments& arguments) {
  RenderOptions options;
  for (const std::string& input : arguments.inputs) {
    options.inputs.push_back(host::PathFromUtf8(input));
  }
  options.output = host::PathFromUtf8(arguments.output);
  options.format = host::ChooseOutputFormat(options.output, arguments.transparent);
  options.transparent = arguments.transparent;
  options.size = ParseSize(arguments.size);
  options.rate = ParseRate(arguments.rate);
  options.frames = ParseFrames(arguments.frames);
  options.device = ParseDevice(arguments.device);
  options.report = host::PathFromUtf8(arguments.report);
  options.mask = host::PathFromUtf8(arguments.mask);
  options.keyframes = host::PathFromUtf8(arguments.keyframes);
  ParseBackground(arguments.background, &options);
  ParseQuality(arguments, &options);
  CheckFiles(options);
  return options;
}

}  // namespace krv::tool
