// What the plug-in announces of an effect.
#pragma once

#include <cstdio>
#include <string>

#include "krv/registrar.h"

namespace example {

// Takes down an effect's name and prints its parameters.
class Listing final : public krv::EffectRegistrar {
 public:
  std::string unique_name;

  int32_t SetEffectNames(const char* unique, const char* display) override {
    unique_name = unique;
    std::printf("%s (%s)\n", unique, display);
    return krv::kOk;
  }
  int32_t SetEffectFlags(uint32_t) override { return krv::kOk; }
  int32_t SetEffectOption(int32_t) override { return krv::kOk; }
  int32_t AddFloatParam(int32_t, int32_t, const char* name, const char*, float minimum,
                        float maximum, float value, uint32_t) override {
    std::printf("  %s: %g, from %g to %g\n", name, value, minimum, maximum);
    return krv::kOk;
  }
  int32_t AddIntParam(int32_t, int32_t, const char* name, const char*, int32_t minimum,
                      int32_t maximum, int32_t value, int32_t, uint32_t) override {
    std::printf("  %s: %d, from %d to %d\n", name, value, minimum, maximum);
    return krv::kOk;
  }
  int32_t AddColorParam(int32_t, int32_t, const char* name, const char*, int32_t value, int32_t,
                        int32_t, uint32_t) override {
    std::printf("  %s: #%06X\n", name, static_cast<unsigned>(value));
    return krv::kOk;
  }
  int32_t AddBoolParam(int32_t, int32_t, const char* name, const char*, uint8_t value,
                       uint32_t) override {
    std::printf("  %s: %s\n", name, value == 0 ? "false" : "true");
    return krv::kOk;
  }
  int32_t AddStringParam(int32_t, int32_t, const char* name, const char*, const char* value,
                         uint32_t) override {
    std::printf("  %s: \"%s\"\n", name, value);
    return krv::kOk;
  }
  int32_t Reserved3() override { return krv::kOk; }
  int32_t Reserved8() override { return krv::kOk; }
  int32_t Reserved9() override { return krv::kOk; }
  int32_t Reserved10() override { return krv::kOk; }
  int32_t Reserved11() override { return krv::kOk; }
  int32_t Reserved12() override { return krv::kOk; }
  int32_t Reserved13() override { return krv::kOk; }
};

}  // namespace example
