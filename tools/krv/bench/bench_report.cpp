#include "bench/bench_report.h"

#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>

#include "platform/file_system.h"

namespace krv::tool {
namespace {

using Json = nlohmann::ordered_json;

template <class... Values>
std::string Format(const char* format, Values... values) {
  char text[400];
  std::snprintf(text, sizeof text, format, values...);
  return text;
}

std::string CostLine(const char* name, const WorkCost& cost) {
  return Format("  %-6s wall %9.3f (%9.3f .. %9.3f)   cpu %9.3f (%9.3f .. %9.3f)", name,
                cost.wall.median, cost.wall.lower, cost.wall.upper, cost.cpu.median, cost.cpu.lower,
                cost.cpu.upper);
}

std::string PartsLine(const char* name, const std::vector<NamedSpread>& parts) {
  std::string line = Format("  %-6s", name);
  for (const NamedSpread& part : parts) {
    line += " " + part.name + Format(" %.3f ", part.spread.median);
  }
  return line;
}

Json ToJson(const Spread& spread) {
  return {{"median", spread.median},
          {"lower_quartile", spread.lower},
          {"upper_quartile", spread.upper}};
}

Json ToJson(const std::vector<NamedSpread>& parts) {
  Json list = Json::array();
  for (const NamedSpread& part : parts) {
    list.push_back({{"name", part.name}, {"wall_ms", ToJson(part.spread)}});
  }
  return list;
}

Json ToJson(const Measurement& measurement) {
  const PackageFacts& facts = measurement.facts;
  const FrameSize effect = EffectSizeOf(facts, measurement.size);
  return {{"effect", facts.unique_name},
          {"form", FormName(measurement.form)},
          {"width", measurement.size.width},
          {"height", measurement.size.height},
          {"quality", facts.quality},
          {"effect_width", effect.width},
          {"effect_height", effect.height},
          {"passes", facts.passes},
          {"reads_background", facts.reads_background},
          {"frame",
           {{"wall_ms", ToJson(measurement.frame.wall)},
            {"cpu_ms", ToJson(measurement.frame.cpu)},
            {"fps", measurement.FramesPerSecond()}}},
          {"limit",
           {{"wall_ms", ToJson(measurement.limit.wall)},
            {"cpu_ms", ToJson(measurement.limit.cpu)},
            {"parts", ToJson(measurement.limit_parts)}}},
          {"ratio", {{"wall", measurement.WallRatio()}, {"cpu", measurement.CpuRatio()}}},
          {"stages", ToJson(measurement.stages)}};
}

}  // namespace

std::string BenchHeading(const BenchResult& result) {
  const BenchSettings& settings = result.settings;
  return result.gl_renderer +
         Format("\n%d rounds of %d frames, as many of the limit, in turn", settings.rounds,
                settings.frames) +
         (settings.instances > 1 ? Format(", %d instances", settings.instances) : "") +
         "; milliseconds a frame: median (quartiles)\n";
}

std::string ToText(const Measurement& measurement) {
  const FrameSize effect = EffectSizeOf(measurement.facts, measurement.size);
  std::string text = measurement.facts.unique_name;
  text += Format(", %s, %d x %d, effect %d x %d (%s)\n", FormName(measurement.form),
                 measurement.size.width, measurement.size.height, effect.width, effect.height,
                 measurement.facts.quality.c_str());
  text +=
      CostLine("frame", measurement.frame) + Format("   %.1f fps\n", measurement.FramesPerSecond());
  text += CostLine("limit", measurement.limit) + "\n";
  text += Format("  ratio  wall %9.2f %26s cpu %9.2f\n", measurement.WallRatio(), "",
                 measurement.CpuRatio());
  text += PartsLine("limit:", measurement.limit_parts) + "\n";
  if (!measurement.stages.empty()) text += PartsLine("stages", measurement.stages) + "\n";
  return text;
}

bool WriteBenchJson(const BenchResult& result, const std::filesystem::path& file) {
  Json measurements = Json::array();
  for (const Measurement& measurement : result.measurements) {
    measurements.push_back(ToJson(measurement));
  }
  const Json json{
      {"gl_renderer", result.gl_renderer},        {"frames", result.settings.frames},
      {"rounds", result.settings.rounds},         {"instances", result.settings.instances},
      {"parameters", result.settings.parameters}, {"measurements", std::move(measurements)}};
  std::ofstream out(host::platform::OpenablePath(file), std::ios::binary);
  out << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
  out.close();
  return static_cast<bool>(out);
}

}  // namespace krv::tool
