#include "studio/parameter_sheet.h"

#include <algorithm>
#include <utility>

namespace krv::studio {

host::HostValue Limited(const host::ParameterListing& parameter, host::HostValue value) {
  if (!parameter.HasRange()) return value;
  if (auto* integer = std::get_if<int32_t>(&value)) {
    *integer = std::clamp(*integer, static_cast<int32_t>(parameter.minimum),
                          static_cast<int32_t>(parameter.maximum));
  } else if (auto* number = std::get_if<float>(&value)) {
    *number = std::clamp(*number, static_cast<float>(parameter.minimum),
                         static_cast<float>(parameter.maximum));
  }
  return value;
}

host::HostValue DefaultOf(const host::ParameterListing& parameter) {
  switch (parameter.kind) {
    case kKindBool:
      return parameter.default_number != 0;
    case kKindText:
      return parameter.default_text;
    case kKindFloat:
      return static_cast<float>(parameter.default_number);
    default:
      return static_cast<int32_t>(parameter.default_number);
  }
}

void ParameterSheet::SetEffect(host::EffectListing effect) {
  effect_ = std::move(effect);
  ValuesByName before;
  before.swap(changed_);
  for (auto& [name, value] : before) {
    const host::ParameterListing* parameter = effect_.Find(name);
    if (parameter == nullptr || DefaultOf(*parameter).index() != value.index()) continue;
    Set(*parameter, std::move(value));
  }
  ++revision_;
}

host::HostValue ParameterSheet::Value(const host::ParameterListing& parameter) const {
  const auto found = changed_.find(parameter.name);
  return found == changed_.end() ? DefaultOf(parameter) : found->second;
}

void ParameterSheet::Set(const host::ParameterListing& parameter, host::HostValue value) {
  value = Limited(parameter, std::move(value));
  if (value == DefaultOf(parameter)) {
    changed_.erase(parameter.name);
  } else {
    changed_.insert_or_assign(parameter.name, std::move(value));
  }
  ++revision_;
}

void ParameterSheet::Reset(std::string_view name) {
  const auto found = changed_.find(name);
  if (found != changed_.end()) changed_.erase(found);
  ++revision_;
}

void ParameterSheet::ResetAll() {
  changed_.clear();
  ++revision_;
}

}  // namespace krv::studio
