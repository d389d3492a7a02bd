#include "registrar.h"

namespace abi {

int32_t RecordingRegistrar::SetEffectNames(const char* unique_name, const char* display_name) {
  calls.Record("SetEffectNames %s %s", unique_name, display_name);
  return kOk;
}

int32_t RecordingRegistrar::SetEffectFlags(uint32_t flags) {
  calls.Record("SetEffectFlags 0x%x", flags);
  return kOk;
}

int32_t RecordingRegistrar::SetEffectOption(int32_t option) {
  calls.Record("SetEffectOption %d", option);
  return kOk;
}

int32_t RecordingRegistrar::AddFloatParam(int32_t a, int32_t b, const char* name, const char* label,
                                          float minimum, float maximum, float initial,
                                          uint32_t hidden) {
  calls.Record("AddFloatParam %d %d %s %s %g %g %g %u", a, b, name, label, double{minimum},
               double{maximum}, double{initial}, hidden);
  return kOk;
}

int32_t RecordingRegistrar::AddIntParam(int32_t a, int32_t b, const char* name, const char* label,
                                        int32_t minimum, int32_t maximum, int32_t initial,
                                        int32_t c, uint32_t hidden) {
  calls.Record("AddIntParam %d %d %s %s %d %d %d %d %u", a, b, name, label, minimum, maximum,
               initial, c, hidden);
  return kOk;
}

int32_t RecordingRegistrar::AddColorParam(int32_t a, int32_t b, const char* name, const char* label,
                                          int32_t initial, int32_t minimum, int32_t maximum,
                                          uint32_t hidden) {
  calls.Record("AddColorParam %d %d %s %s %d %d %d %u", a, b, name, label, initial, minimum,
               maximum, hidden);
  return kOk;
}

int32_t RecordingRegistrar::AddBoolParam(int32_t a, int32_t b, const char* name, const char* label,
                                         uint8_t initial, uint32_t hidden) {
  calls.Record("AddBoolParam %d %d %s %s %d %u", a, b, name, label, initial, hidden);
  return kOk;
}

int32_t RecordingRegistrar::AddStringParam(int32_t a, int32_t b, const char* name,
                                           const char* label, const char* initial,
                                           uint32_t hidden) {
  calls.Record("AddStringParam %d %d %s %s %s %u", a, b, name, label, initial, hidden);
  return kOk;
}

int32_t RecordingRegistrar::Unexpected(int slot) {
  calls.Record("slot %d, which is reserved", slot);
  return kOk;
}

}  // namespace abi
