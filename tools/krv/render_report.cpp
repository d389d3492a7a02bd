#include "render_report.h"

#include <cinttypes>
#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>

#include "media/media_error.h"
#include "platform/file_system.h"
#include "utf8_path.h"

namespace krv::tool {

std::string Summary(const RenderResult& result, const std::filesystem::path& output) {
  char numbers[120];
  std::snprintf(numbers, sizeof numbers, "%s%" PRId64 " frame%s in %.1f s (%.1f fps): ",
                result.interrupted ? "interrupted after " : "", result.frames,
                result.frames == 1 ? "" : "s", result.seconds, result.FramesPerSecond());
  std::string summary = numbers + host::Utf8(output);
  if (result.frames_without_person > 0) {
    summary += "; " + std::to_string(result.frames_without_person) +
               " of them without a person, shown as they came";
  }
  return summary;
}

void WriteReport(const RenderResult& result, const RenderOptions& options, const RenderInput& input,
                 const std::string& gl_renderer) {
  const host::VideoFormat& video = input.video();
  const host::AudioFormat audio = input.audio();
  const nlohmann::ordered_json json{
      {"output", host::Utf8(options.output)},
      {"first_frame", options.frames.first},
      {"frames", result.frames},
      {"frames_without_person", result.frames_without_person},
      {"interrupted", result.interrupted},
      {"seconds", result.seconds},
      {"fps", result.FramesPerSecond()},
      {"stage_seconds",
       {{"decode", result.stages.decode},
        {"render", result.stages.render},
        {"encode", result.stages.encode},
        {"finish", result.stages.finish}}},
      {"video",
       {{"width", video.width},
        {"height", video.height},
        {"rate_numerator", video.rate.numerator},
        {"rate_denominator", video.rate.denominator}}},
      {"audio", {{"sample_rate", audio.sample_rate}, {"channels", audio.channels}}},
      {"device", options.device == host::DeviceUse::kGpu ? "gpu" : "memory"},
      {"gl_renderer", gl_renderer}};
  std::ofstream file(host::platform::OpenablePath(options.report), std::ios::binary);
  file << json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
  file.close();
  if (!file) throw host::MediaError(host::Utf8(options.report) + ": cannot be written");
}

}  // namespace krv::tool
