#include "description/parameter_reader.h"

#include <algorithm>
#include <limits>

namespace krv {
namespace {

using nlohmann::json;

bool HasUiType(const json& entry, const char* ui_type) {
  const auto found = entry.find("ui_type");
  return found != entry.end() && *found == ui_type;
}

// A whole number as the library reads it; a fraction cut, and limited where the library's
// conversion is undefined.
int32_t ReadInt(const json& value) {
  if (!value.is_number_float()) return value.get<int32_t>();
  constexpr double kLeast = std::numeric_limits<int32_t>::min();
  constexpr double kMost = std::numeric_limits<int32_t>::max();
  return static_cast<int32_t>(std::clamp(value.get<double>(), kLeast, kMost));
}

int32_t ReadKind(const json& entry) {
  return HasUiType(entry, "Color") ? kKindColor : ReadInt(entry.at("type"));
}

StoredParameterValue ReadValue(const json& entry, const char* key, int32_t kind) {
  const auto found = entry.find(key);
  if (found == entry.end()) return {};
  ParameterValue value = ZeroParameterValue(kind);
  switch (kind) {
    case kKindInt:
    case kKindIntInternal:
    case kKindColor:
      value.as_int = ReadInt(*found);
      break;
    case kKindFloat:
      value.as_float = found->get<float>();
      break;
    case kKindDouble:
      // The library converts a boolean to every number but its own floating-point type.
      value.as_double = found->is_boolean() ? ReadInt(*found) : found->get<double>();
      break;
    case kKindBool:
      value.as_bool = ReadInt(*found) != 0 ? 1 : 0;
      break;
    case kKindText: {
      const auto text = found->get<std::string>();
      value.as_text = text.c_str();
      return StoredParameterValue(value);
    }
    default:
      break;  // a kind without a value
  }
  return StoredParameterValue(value);
}

ParameterDescription ReadParameter(const json& entry) {
  ParameterDescription parameter;
  parameter.name = entry.at("name").get<std::string>();
  const int32_t kind = ReadKind(entry);
  parameter.max_value = ReadValue(entry, "max_value", kind);
  parameter.min_value = ReadValue(entry, "min_value", kind);
  parameter.default_value = ReadValue(entry, "default_value", kind);
  parameter.hidden = HasUiType(entry, "NoShow") ? 1 : 0;
  return parameter;
}

}  // namespace

int32_t ReadParameters(const json& root, ParameterList& list, ParameterMap& by_name) {
  by_name.clear();
  list.clear();
  const auto params = root.find("params");
  if (params == root.end()) return kNoParameters;
  for (const json& entry : params->get_ref<const json::array_t&>()) {
    auto parameter = std::make_shared<const ParameterDescription>(ReadParameter(entry));
    by_name.insert_or_assign(parameter->name, parameter);
    list.push_back(std::move(parameter));
  }
  return kOk;
}

}  // namespace krv
