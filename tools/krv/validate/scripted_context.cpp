#include "validate/scripted_context.h"

#include <cstring>
#include <string_view>

namespace krv::tool {
namespace {

ParameterValue Record(int32_t kind) {
  ParameterValue record{};
  record.kind = kind;
  return record;
}

}  // namespace

void ScriptedContext::GetFrameRate(int64_t* numerator, int64_t* denominator) {
  *numerator = rate_numerator;
  *denominator = rate_denominator;
}

int32_t ScriptedContext::GetParameterValue(const char* name, int64_t /*the same at all of them*/,
                                           ParameterValue* value) {
  if (const auto answer = answers.find(name); answer != answers.end()) {
    *value = answer->second;
    return kOk;
  }
  if (refusal != nullptr) *value = *refusal;
  return kNothingToDo;
}

int32_t ScriptedContext::QueryProperty(const char* name, int32_t type, void* result,
                                       uint32_t size) {
  constexpr uint32_t kPointerBytes = sizeof(void*);
  if (std::string_view(name) != kPersonMaskProperty || type != kPropertyPointer ||
      size != kPointerBytes) {
    return kNothingToDo;
  }
  std::memcpy(result, &person_mask, kPointerBytes);
  return kOk;
}

ParameterValue IntRecord(int32_t value, int32_t kind) {
  ParameterValue record = Record(kind);
  record.as_int = value;
  return record;
}

ParameterValue FloatRecord(float value) {
  ParameterValue record = Record(kKindFloat);
  record.as_float = value;
  return record;
}

ParameterValue DoubleRecord(double value) {
  ParameterValue record = Record(kKindDouble);
  record.as_double = value;
  return record;
}

ParameterValue BoolRecord(uint8_t value) {
  ParameterValue record = Record(kKindBool);
  record.as_bool = value;
  return record;
}

ParameterValue TextRecord(const char* value) {
  ParameterValue record = Record(kKindText);
  record.as_text = value;
  return record;
}

}  // namespace krv::tool
