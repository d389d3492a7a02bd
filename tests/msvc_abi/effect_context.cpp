#include "effect_context.h"

#include "c_library.h"

namespace abi {
namespace {

void Describe(const ParameterValue& value, char* text, size_t size) {
  switch (value.kind) {
    case kInt:
    case kInternalInt:
    case kColor:
      snprintf(text, size, "kind %d, %d", value.kind, value.as_int);
      break;
    case kFloat:
      snprintf(text, size, "kind %d, %g", value.kind, double{value.as_float});
      break;
    case kDouble:
      snprintf(text, size, "kind %d, %g", value.kind, value.as_double);
      break;
    case kBool:
      snprintf(text, size, "kind %d, %u", value.kind, uint32_t{value.as_byte});
      break;
    case kText:
      snprintf(text, size, "kind %d, %s", value.kind, value.as_text);
      break;
    default:
      snprintf(text, size, "kind %d", value.kind);
  }
}

}  // namespace

void Sound::FillWithNoise(int32_t amplitude) {
  uint32_t state = 1;
  for (int16_t& sample : samples) {
    state = state * 1664525 + 1013904223;
    sample =
        static_cast<int16_t>(static_cast<int32_t>(state >> 16) * 2 * amplitude / 65536 - amplitude);
  }
}

int32_t Sound::GetSampleRate() {
  ++rate_requests;
  return 48000;
}

int64_t Sound::GetStartSample() {
  ++start_requests;
  return int64_t{1} << 40;
}

void FrameContext::GetFrameRate(int64_t* numerator, int64_t* denominator) {
  *numerator = rate_numerator;
  *denominator = rate_denominator;
}

int32_t FrameContext::GetParameterValue(const char* name, int64_t position, ParameterValue* value) {
  char arrived[128];
  Describe(*value, arrived, sizeof(arrived));
  asked.Record("%s at %lld: %s", name, position, arrived);
  for (int i = 0; i < value_count; ++i) {
    if (strcmp(values[i].name, name) != 0) continue;
    *value = values[i].value;
    return kOk;
  }
  return kNothingToDo;
}

void FrameContext::RequestExtraInput(uint32_t value) { requests.Record("%u", value); }

}  // namespace abi
