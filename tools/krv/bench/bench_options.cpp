#include "bench/bench_options.h"

#include <charconv>
#include <string_view>

namespace krv::tool {
namespace {

constexpr int kShortestSide = 16;  // pixels
constexpr int kLongestSide = 16384;

// Nothing for what is no number, or not the length of a side.
std::optional<int> ParseSide(std::string_view text) {
  int number = 0;
  const char* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || rest != end) return std::nullopt;
  if (number < kShortestSide || number > kLongestSide) return std::nullopt;
  return number;
}

std::optional<FrameSize> ParseFrameSize(std::string_view text) {
  if (text == "720p") return FrameSize{1280, 720};
  if (text == "1080p") return FrameSize{1920, 1080};
  if (text == "2160p") return FrameSize{3840, 2160};
  const size_t cross = text.find('x');
  if (cross == std::string_view::npos) return std::nullopt;
  const auto width = ParseSide(text.substr(0, cross));
  const auto height = ParseSide(text.substr(cross + 1));
  if (!width || !height) return std::nullopt;
  return FrameSize{*width, *height};
}

}  // namespace

const char* FormName(host::DeviceUse form) {
  return form == host::DeviceUse::kGpu ? "gpu" : "memory";
}

std::optional<BenchSettings> ParseBenchSettings(const BenchArguments& arguments,
                                                std::string* error) {
  BenchSettings settings{
      {}, {}, {}, arguments.parameters, arguments.frames, arguments.rounds, arguments.instances};
  std::vector<std::string> sizes = arguments.sizes;
  if (sizes.empty()) sizes = {"720p", "1080p", "2160p"};
  for (const std::string& text : sizes) {
    const auto size = ParseFrameSize(text);
    if (!size) {
      *error = "--size " + text +
               ": give 720p, 1080p, 2160p or WIDTHxHEIGHT in pixels, from 16x16 to 16384x16384";
      return std::nullopt;
    }
    settings.sizes.push_back(*size);
  }
  std::vector<std::string> forms = arguments.forms;
  if (forms.empty()) forms = {"memory", "gpu"};
  for (const std::string& text : forms) {
    if (text != "memory" && text != "gpu") {
      *error = "--form " + text + ": give memory or gpu";
      return std::nullopt;
    }
    settings.forms.push_back(text == "gpu" ? host::DeviceUse::kGpu : host::DeviceUse::kMemory);
  }
  if (!arguments.quality.empty()) {
    if (arguments.quality != "low" && arguments.quality != "medium" &&
        arguments.quality != "high") {
      *error = "--quality " + arguments.quality + ": give low, medium or high";
      return std::nullopt;
    }
    settings.quality = arguments.quality;
  }
  return settings;
}

}  // namespace krv::tool
