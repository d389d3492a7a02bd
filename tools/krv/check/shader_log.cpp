#include "check/shader_log.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <utility>

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

// Takes expected pieces off the front of a line.
class Pieces {
 public:
  explicit Pieces(std::string_view rest) : rest_(rest) {}

  bool Take(std::string_view text) {
    if (!rest_.starts_with(text)) return false;
    rest_.remove_prefix(text.size());
    return true;
  }

  bool TakeNumber(int* number) {
    const char* begin = rest_.data();
    const auto [end, code] = std::from_chars(begin, begin + rest_.size(), *number);
    rest_.remove_prefix(static_cast<size_t>(end - begin));
    return code == std::errc();
  }

  // One of the two words before a message.
  bool TakeSeverity(std::string_view error, std::string_view warning, bool* is_warning) {
    *is_warning = rest_.starts_with(warning);
    return Take(error) || Take(warning);
  }

  std::string Rest() const { return std::string(rest_); }

 private:
  std::string_view rest_;
};

std::optional<DriverMessage> ParseMesaLine(std::string_view line) {
  Pieces pieces(line);
  DriverMessage message;
  int number = 0;
  if (!pieces.TakeNumber(&number) || !pieces.Take(":") || !pieces.TakeNumber(&message.line) ||
      !pieces.Take("(") || !pieces.TakeNumber(&number) || !pieces.Take("): ") ||
      !pieces.TakeSeverity("error: ", "warning: ", &message.warning)) {
    return std::nullopt;
  }
  message.text = pieces.Rest();
  return message;
}

std::optional<DriverMessage> ParseNvidiaLine(std::string_view line) {
  Pieces pieces(line);
  DriverMessage message;
  int number = 0;
  if (!pieces.TakeNumber(&number) || !pieces.Take("(") || !pieces.TakeNumber(&message.line) ||
      !pieces.Take(") : ") || !pieces.TakeSeverity("error ", "warning ", &message.warning)) {
    return std::nullopt;
  }
  message.text = pieces.Rest();
  return message;
}

std::optional<DriverMessage> ParseEsLine(std::string_view line) {
  Pieces pieces(line);
  DriverMessage message;
  int number = 0;
  if (!pieces.TakeSeverity("ERROR: ", "WARNING: ", &message.warning) ||
      !pieces.TakeNumber(&number) || !pieces.Take(":") || !pieces.TakeNumber(&message.line) ||
      !pieces.Take(": ")) {
    return std::nullopt;
  }
  message.text = pieces.Rest();
  return message;
}

DriverMessage ParseDriverLine(std::string_view line) {
  for (const auto parse : {ParseMesaLine, ParseNvidiaLine, ParseEsLine}) {
    if (auto message = parse(line)) return std::move(*message);
  }
  return {0, false, std::string(line)};
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
    messages.push_back(ParseDriverLine(line.substr(0, end)));
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
