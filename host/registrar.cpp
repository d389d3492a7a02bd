#include "registrar.h"

#include <algorithm>

namespace krv::host {
namespace {

std::string Text(const char* text) { return text == nullptr ? std::string() : std::string(text); }

ParameterListing NumberListing(const char* name, const char* label, ParameterKind kind,
                               double minimum, double maximum, double default_value,
                               uint32_t hidden) {
  ParameterListing listing;
  listing.name = Text(name);
  listing.label = Text(label);
  listing.kind = kind;
  listing.minimum = minimum;
  listing.maximum = maximum;
  listing.default_number = default_value;
  listing.hidden = hidden != 0;
  return listing;
}

}  // namespace

bool ParameterListing::HasRange() const {
  return (kind == kKindInt || kind == kKindFloat || kind == kKindColor) && minimum < maximum;
}

const ParameterListing* EffectListing::Find(std::string_view name) const {
  const auto found =
      std::find_if(parameters.rbegin(), parameters.rend(),
                   [name](const ParameterListing& parameter) { return parameter.name == name; });
  return found == parameters.rend() ? nullptr : &*found;
}

const char* ParameterKindName(ParameterKind kind) {
  switch (kind) {
    case kKindInt:
      return "int";
    case kKindFloat:
      return "float";
    case kKindBool:
      return "bool";
    case kKindText:
      return "text";
    case kKindColor:
      return "colour";
    default:
      return "unknown";
  }
}

int32_t RecordingRegistrar::SetEffectNames(const char* unique_name, const char* display_name) {
  effect_.unique_name = Text(unique_name);
  effect_.display_name = Text(display_name);
  return kOk;
}

int32_t RecordingRegistrar::SetEffectFlags(uint32_t flags) {
  effect_.flags = flags;
  return kOk;
}

int32_t RecordingRegistrar::SetEffectOption(int32_t) { return kOk; }

int32_t RecordingRegistrar::AddFloatParam(int32_t, int32_t, const char* name, const char* label,
                                          float minimum, float maximum, float default_value,
                                          uint32_t hidden) {
  effect_.parameters.push_back(
      NumberListing(name, label, kKindFloat, minimum, maximum, default_value, hidden));
  return kOk;
}

int32_t RecordingRegistrar::AddIntParam(int32_t, int32_t, const char* name, const char* label,
                                        int32_t minimum, int32_t maximum, int32_t default_value,
                                        int32_t, uint32_t hidden) {
  effect_.parameters.push_back(
      NumberListing(name, label, kKindInt, minimum, maximum, default_value, hidden));
  return kOk;
}

int32_t RecordingRegistrar::AddColorParam(int32_t, int32_t, const char* name, const char* label,
                                          int32_t default_value, int32_t minimum, int32_t maximum,
                                          uint32_t hidden) {
  effect_.parameters.push_back(
      NumberListing(name, label, kKindColor, minimum, maximum, default_value, hidden));
  return kOk;
}

int32_t RecordingRegistrar::AddBoolParam(int32_t, int32_t, const char* name, const char* label,
                                         uint8_t default_value, uint32_t hidden) {
  effect_.parameters.push_back(
      NumberListing(name, label, kKindBool, 0, 1, default_value != 0 ? 1 : 0, hidden));
  return kOk;
}

int32_t RecordingRegistrar::AddStringParam(int32_t, int32_t, const char* name, const char* label,
                                           const char* default_value, uint32_t hidden) {
  ParameterListing listing = NumberListing(name, label, kKindText, 0, 0, 0, hidden);
  listing.default_text = Text(default_value);
  effect_.parameters.push_back(std::move(listing));
  return kOk;
}

int32_t RecordingRegistrar::Reserved3() { return kFailed; }
int32_t RecordingRegistrar::Reserved8() { return kFailed; }
int32_t RecordingRegistrar::Reserved9() { return kFailed; }
int32_t RecordingRegistrar::Reserved10() { return kFailed; }
int32_t RecordingRegistrar::Reserved11() { return kFailed; }
int32_t RecordingRegistrar::Reserved12() { return kFailed; }
int32_t RecordingRegistrar::Reserved13() { return kFailed; }

}  // namespace krv::host
