#include "validate/announcement_recorder.h"

#include <cmath>

namespace krv::tool {
namespace {

constexpr int kHeadCalls = 3;  // slots 0, 1 and 2

}  // namespace

void AnnouncementRecorder::ExpectPlace(int place, const char* call) {
  examiner_.Expect(calls_ == place, std::string(call) + " as call " + std::to_string(place),
                   "it as call " + std::to_string(calls_));
  ++calls_;
}

void AnnouncementRecorder::Finish() {
  examiner_.Expect(calls_ >= kHeadCalls, "an announcement by slots 0, 1 and 2",
                   std::to_string(calls_) + " calls");
  examiner_.Expect(!unique_name_.empty(), "a unique name", "an empty one");
}

int32_t AnnouncementRecorder::SetEffectNames(const char* unique_name, const char* display_name) {
  ExpectPlace(0, "SetEffectNames");
  examiner_.Expect(unique_name != nullptr && display_name != nullptr, "two names", "a null");
  if (unique_name != nullptr) unique_name_ = unique_name;
  return kOk;
}

int32_t AnnouncementRecorder::SetEffectFlags(uint32_t flags) {
  ExpectPlace(1, "SetEffectFlags");
  examiner_.ExpectCount("as flags", flags, flags_);
  return kOk;
}

int32_t AnnouncementRecorder::SetEffectOption(int32_t option) {
  ExpectPlace(2, "SetEffectOption");
  examiner_.ExpectCount("as option", option, 0);
  return kOk;
}

int32_t AnnouncementRecorder::Reserved() {
  examiner_.Expect(false, "no call of a reserved slot of the registrar", "one");
  return kFailed;
}

void AnnouncementRecorder::LookAtParameter(int32_t reserved_a, int32_t reserved_b, const char* name,
                                           const char* label, uint32_t hidden) {
  examiner_.Expect(calls_ >= kHeadCalls, "parameters after slots 0, 1 and 2", "one before");
  ++calls_;
  examiner_.Expect(reserved_a == -1 && reserved_b == 0, "-1 and 0 before a parameter's name",
                   std::to_string(reserved_a) + " and " + std::to_string(reserved_b));
  examiner_.Expect(name != nullptr && *name != '\0', "a parameter's name", "none");
  examiner_.Expect(label != nullptr, "a parameter's label", "null");
  examiner_.Expect(hidden <= 1, "0 or 1 for hidden", std::to_string(hidden));
}

int32_t AnnouncementRecorder::AddFloatParam(int32_t reserved_a, int32_t reserved_b,
                                            const char* name, const char* label, float minimum,
                                            float maximum, float default_value, uint32_t hidden) {
  LookAtParameter(reserved_a, reserved_b, name, label, hidden);
  examiner_.Expect(std::isfinite(minimum) && std::isfinite(maximum) && std::isfinite(default_value),
                   "numbers as limits and default", "something else");
  return kOk;
}

int32_t AnnouncementRecorder::AddIntParam(int32_t reserved_a, int32_t reserved_b, const char* name,
                                          const char* label, int32_t /*minimum*/,
                                          int32_t /*maximum*/, int32_t /*default_value*/,
                                          int32_t reserved_c, uint32_t hidden) {
  LookAtParameter(reserved_a, reserved_b, name, label, hidden);
  examiner_.ExpectCount("behind an integer's default", reserved_c, 1);
  return kOk;
}

int32_t AnnouncementRecorder::AddColorParam(int32_t reserved_a, int32_t reserved_b,
                                            const char* name, const char* label,
                                            int32_t /*default_value*/, int32_t /*minimum*/,
                                            int32_t /*maximum*/, uint32_t hidden) {
  LookAtParameter(reserved_a, reserved_b, name, label, hidden);
  return kOk;
}

int32_t AnnouncementRecorder::AddBoolParam(int32_t reserved_a, int32_t reserved_b, const char* name,
                                           const char* label, uint8_t default_value,
                                           uint32_t hidden) {
  LookAtParameter(reserved_a, reserved_b, name, label, hidden);
  examiner_.Expect(default_value <= 1, "0 or 1 as a boolean's default",
                   std::to_string(default_value));
  return kOk;
}

int32_t AnnouncementRecorder::AddStringParam(int32_t reserved_a, int32_t reserved_b,
                                             const char* name, const char* label,
                                             const char* default_value, uint32_t hidden) {
  LookAtParameter(reserved_a, reserved_b, name, label, hidden);
  examiner_.Expect(default_value != nullptr, "a text's default", "null");
  return kOk;
}

}  // namespace krv::tool
