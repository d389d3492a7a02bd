#include "check/shader_log.h"

#include <algorithm>
#include <array>
#include <optional>
#include <regex>

namespace krv::tool {
namespace {

constexpr std::string_view kFailurePrefix = "Shader compiler failed (";
constexpr std::string_view kGlErrorPrefix = "GL error ";

struct StagePrefix {
  std::string_view text;
  ShaderStage stage;
};
constexpr std::array<StagePrefix, 3> kStages = {{{"vert) : ", ShaderStage::kVertex},
                                                 {"frag) : ", ShaderStage::kFragment},
                                                 {"link status) : ", ShaderStage::kLink}}};

std::vector<std::string_view> Lines(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const size_t end = std::min(text.find('\n'), text.size());
    lines.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

// The failure that a line begins.
std::optional<ShaderFailure> BeginFailure(std::string_view line) {
  if (!line.starts_with(kFailurePrefix)) return std::nullopt;
  line.remove_prefix(kFailurePrefix.size());
  for (const StagePrefix& prefix : kStages) {
    if (!line.starts_with(prefix.text)) continue;
    return ShaderFailure{prefix.stage, std::string(line.substr(prefix.text.size()))};
  }
  return std::nullopt;
}

DriverMessage ParseDriverLine(const std::string& line) {
  static const std::regex mesa(R"(^\d+:(\d+)\(\d+\): (error|warning): (.*)$)");
  static const std::regex nvidia(R"(^\d+\((\d+)\) : (error|warning) (.*)$)");
  static const std::regex es(R"(^(?:ERROR|WARNING): \d+:(\d+): (.*)$)");
  std::smatch match;
  if (std::regex_match(line, match, mesa) || std::regex_match(line, match, nvidia)) {
    return {std::stoi(match[1]), match[2] == "warning", match[3]};
  }
  if (std::regex_match(line, match, es)) {
    return {std::stoi(match[1]), line.front() == 'W', match[2]};
  }
  return {0, false, line};
}

}  // namespace

std::vector<ShaderFailure> ParseShaderFailures(std::string_view output) {
  std::vector<ShaderFailure> failures;
  bool inside = false;
  for (const std::string_view line : Lines(output)) {
    if (auto failure = BeginFailure(line)) {
      failures.push_back(std::move(*failure));
      inside = true;
    } else if (line.starts_with(kGlErrorPrefix)) {
      inside = false;
    } else if (inside) {
      failures.back().log.append("\n").append(line);
    }
  }
  return failures;
}

std::vector<DriverMessage> ParseDriverLog(std::string_view log) {
  std::vector<DriverMessage> messages;
  for (const std::string_view line : Lines(log)) {
    const size_t end = line.find_last_not_of(" \t\r") + 1;
    if (end == 0) continue;
    messages.push_back(ParseDriverLine(std::string(line.substr(0, end))));
  }
  return messages;
}

std::vector<std::string> ParseGlErrors(std::string_view output) {
  std::vector<std::string> errors;
  for (const std::string_view line : Lines(output)) {
    if (line.starts_with(kGlErrorPrefix)) errors.emplace_back(line);
  }
  return errors;
}

}  // namespace krv::tool
