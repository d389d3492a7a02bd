#include "effect_context.h"

#include <cstring>
#include <string_view>

namespace krv::host {
namespace {

// Fills *result, which points into `value` when that holds a text.
struct ValueWriter {
  ParameterValue* result;

  void operator()(int32_t value) const {
    result->kind = kKindInt;
    result->as_int = value;
  }
  void operator()(float value) const {
    result->kind = kKindFloat;
    result->as_float = value;
  }
  void operator()(bool value) const {
    result->kind = kKindBool;
    result->as_bool = value ? 1 : 0;
  }
  void operator()(const std::string& value) const {
    result->kind = kKindText;
    result->as_text = value.c_str();
  }
};

}  // namespace

int64_t FrameContext::GetFrameIndex() { return setup_.index; }

void FrameContext::GetFrameRate(int64_t* numerator, int64_t* denominator) {
  *numerator = setup_.rate_numerator;
  *denominator = setup_.rate_denominator;
}

HostFrame* FrameContext::GetOutputFrame() { return setup_.output; }

HostFrame* FrameContext::GetInputFrame() { return setup_.input; }

AudioBlock* FrameContext::GetAudioBlock() { return setup_.audio; }

int32_t FrameContext::GetParameterValue(const char* name, int64_t position, ParameterValue* value) {
  if (setup_.parameters == nullptr) return kNothingToDo;
  value_ = setup_.parameters->ValueAt(name, position);
  if (!value_) return kNothingToDo;
  std::visit(ValueWriter{value}, *value_);
  return kOk;
}

int32_t FrameContext::QueryProperty(const char* name, int32_t type, void* result, uint32_t size) {
  constexpr uint32_t kPointerBytes = sizeof(void*);
  if (std::string_view(name) != kPersonMaskProperty || type != kPropertyPointer ||
      size != kPointerBytes) {
    return kNothingToDo;
  }
  std::memcpy(result, &setup_.person_mask, kPointerBytes);
  return kOk;
}

void FrameContext::RequestExtraInput(uint32_t value) { extra_input_requested_ = value != 0; }

}  // namespace krv::host
