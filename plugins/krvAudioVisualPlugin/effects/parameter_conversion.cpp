#include "effects/parameter_conversion.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace krv {
namespace {

std::optional<double> NumberOf(const ParameterValue& value) {
  switch (value.kind) {
    case kKindInt:
    case kKindIntInternal:
    case kKindColor:
      return value.as_int;
    case kKindFloat:
      return value.as_float;
    case kKindDouble:
      return value.as_double;
    case kKindBool:
      return value.as_bool != 0 ? 1.0 : 0.0;
    default:
      return std::nullopt;
  }
}

int32_t ToInt(double number) {
  if (std::isnan(number)) return 0;
  return static_cast<int32_t>(std::clamp<double>(number, std::numeric_limits<int32_t>::min(),
                                                 std::numeric_limits<int32_t>::max()));
}

}  // namespace

ColorChannels SplitColor(int32_t color) {
  const auto channel = [color](int shift) {
    return static_cast<float>(((color >> shift) & 255) / 255.0);
  };
  return {channel(16), channel(8), channel(0)};
}

ParameterValue IntValue(int32_t value) {
  ParameterValue record{};
  record.kind = kKindInt;
  record.as_int = value;
  return record;
}

ParameterValue FloatValue(float value) {
  ParameterValue record{};
  record.kind = kKindFloat;
  record.as_float = value;
  return record;
}

ParameterValue ConvertToKind(const ParameterValue& declared, const ParameterValue& value) {
  if (value.kind == declared.kind || declared.kind == kKindNone) return value;
  const std::optional<double> number = NumberOf(value);
  if (!number) return declared;
  ParameterValue converted{};
  converted.kind = declared.kind;
  switch (declared.kind) {
    case kKindInt:
    case kKindIntInternal:
    case kKindColor:
      converted.as_int = ToInt(*number);
      return converted;
    case kKindFloat:
      converted.as_float = static_cast<float>(*number);
      return converted;
    case kKindDouble:
      converted.as_double = *number;
      return converted;
    case kKindBool:
      converted.as_bool = *number != 0.0 ? 1 : 0;
      return converted;
    default:
      return declared;
  }
}

}  // namespace krv
