#include "description/parameter_description.h"

namespace krv {

ParameterValue ZeroParameterValue(int32_t kind) {
  ParameterValue value{};
  value.kind = kind;
  value.as_double = 0.0;  // the widest member: clears all eight bytes
  return value;
}

StoredParameterValue::StoredParameterValue() : value_(ZeroParameterValue(kKindNone)) {}

StoredParameterValue::StoredParameterValue(const ParameterValue& value) : value_(value) {
  if (value.kind != kKindText) return;
  if (value.as_text != nullptr) text_ = value.as_text;
  value_.as_text = nullptr;
}

ParameterValue StoredParameterValue::View() const {
  ParameterValue view = value_;
  if (view.kind == kKindText) view.as_text = text_.c_str();
  return view;
}

}  // namespace krv
