#include "parameter_values.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <vector>

#include "gradient_text.h"
#include "nearest_name.h"
#include "text_pieces.h"

namespace krv::host {
namespace {

std::string Quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

// As the package says it: limits of floats are floats, 0.05 and not 0.05000000074505806.
std::string LimitText(ParameterKind kind, double limit) {
  std::array<char, 64> text;
  char* const end = text.data() + text.size();
  const auto written = kind == kKindFloat
                           ? std::to_chars(text.data(), end, static_cast<float>(limit))
                           : std::to_chars(text.data(), end, limit);
  return {text.data(), written.ptr};
}

std::optional<bool> ParseBool(std::string_view text) {
  for (const char* yes : {"true", "yes", "on", "1"}) {
    if (text == yes) return true;
  }
  for (const char* no : {"false", "no", "off", "0"}) {
    if (text == no) return false;
  }
  return std::nullopt;
}

std::optional<float> ParseFloat(std::string_view text) {
  const auto value = ParseNumber<float>(text);
  return value && std::isfinite(*value) ? value : std::nullopt;
}

const char* Wanted(ParameterKind kind) {
  switch (kind) {
    case kKindInt:
      return "a whole number";
    case kKindFloat:
      return "a number";
    case kKindBool:
      return "true or false";
    case kKindColor:
      return "a colour (#RRGGBB, 0xRRGGBB or a decimal number)";
    default:
      return "a text";
  }
}

std::optional<HostValue> Parse(ParameterKind kind, std::string_view text) {
  switch (kind) {
    case kKindInt:
      return ParseNumber<int32_t>(text);
    case kKindFloat:
      return ParseFloat(text);
    case kKindBool:
      return ParseBool(text);
    case kKindColor:
      return ParseColour(text);
    case kKindText:
      return std::string(text);
    default:
      return std::nullopt;
  }
}

double AsNumber(const HostValue& value) {
  if (const auto* integer = std::get_if<int32_t>(&value)) return *integer;
  if (const auto* number = std::get_if<float>(&value)) return *number;
  return 0;
}

}  // namespace

std::optional<int32_t> ParseColour(std::string_view text) {
  std::optional<uint32_t> colour;
  if (text.starts_with("#") && text.size() == 7) {
    colour = ParseNumber<uint32_t>(text.substr(1), 16);
  } else if (text.starts_with("0x") || text.starts_with("0X")) {
    colour = ParseNumber<uint32_t>(text.substr(2), 16);
  } else {
    colour = ParseNumber<uint32_t>(text);
  }
  if (!colour || *colour > 0xFFFFFF) return std::nullopt;
  return static_cast<int32_t>(*colour);
}

std::string UnknownParameter(const EffectListing& effect, std::string_view name) {
  std::string message =
      "effect " + Quoted(effect.unique_name) + " has no parameter " + Quoted(name);
  std::vector<std::string> names;
  for (const ParameterListing& parameter : effect.parameters) names.push_back(parameter.name);
  if (names.empty()) return message + " (it has none at all)";
  if (const auto nearest = NearestName(name, names)) {
    return message + "; did you mean " + Quoted(*nearest) + "?";
  }
  return message + "; `krv list` shows those it has";
}

std::string WrongKind(const ParameterListing& parameter, std::string_view value) {
  return "parameter " + Quoted(parameter.name) + " wants " + Wanted(parameter.kind) + ", not " +
         std::string(value);
}

std::optional<std::string> BeyondLimits(const ParameterListing& parameter, const HostValue& value,
                                        std::string_view text) {
  const double number = AsNumber(value);
  if (!parameter.HasRange() || (number >= parameter.minimum && number <= parameter.maximum)) {
    return std::nullopt;
  }
  return "parameter " + Quoted(parameter.name) + " lies between " +
         LimitText(parameter.kind, parameter.minimum) + " and " +
         LimitText(parameter.kind, parameter.maximum) + "; " + std::string(text) + " does not";
}

std::optional<HostValue> ParseParameterValue(const ParameterListing& parameter,
                                             std::string_view text, std::string* error) {
  std::optional<HostValue> value = Parse(parameter.kind, text);
  if (!value) {
    *error = WrongKind(parameter, Quoted(text));
    return std::nullopt;
  }
  if (auto beyond = BeyondLimits(parameter, *value, text)) {
    *error = std::move(*beyond);
    return std::nullopt;
  }
  if (!IsOfUse(parameter, text)) {
    *error =
        "parameter " + Quoted(parameter.name) +
        " wants a gradient such as \"2,16711680,0;255,100\" (how many stops, then the colour and "
        "the place of each), not " +
        Quoted(text);
    return std::nullopt;
  }
  return value;
}

bool ParameterValues::Assign(const EffectListing& effect, std::string_view assignment,
                             std::string* error) {
  const size_t equals = assignment.find('=');
  if (equals == std::string_view::npos || equals == 0) {
    *error = "a parameter is set as name=value, not as " + Quoted(assignment);
    return false;
  }
  const std::string_view name = assignment.substr(0, equals);
  const ParameterListing* parameter = effect.Find(name);
  if (parameter == nullptr) {
    *error = UnknownParameter(effect, name);
    return false;
  }
  auto value = ParseParameterValue(*parameter, assignment.substr(equals + 1), error);
  if (!value) return false;
  Set(std::string(name), std::move(*value));
  return true;
}

void ParameterValues::Set(std::string name, HostValue value) {
  values_.insert_or_assign(std::move(name), std::move(value));
}

std::optional<HostValue> ParameterValues::ValueAt(std::string_view name, int64_t) const {
  const auto found = values_.find(name);
  if (found == values_.end()) return std::nullopt;
  return found->second;
}

}  // namespace krv::host
