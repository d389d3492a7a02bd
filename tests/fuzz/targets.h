// What fuzzers feed: readers of bytes that come from packages, hosts and pictures.
#pragma once

#include <string_view>

namespace krv::fuzz {

// Each takes any bytes. It ends the process, with a message, when the product breaks a promise; a
// refusal by the documented errors is none.
void ReadDescription(std::string_view bytes);  // the text of a description.json
void ReadGradient(std::string_view bytes);     // the text of a gradient parameter
void ReadShaderFile(std::string_view bytes);   // an enciphered shader file
void AnalyseAudio(std::string_view bytes);     // channels, then samples
void TraceOutlines(std::string_view bytes);    // width, spacing, then a byte per pixel

struct Target {
  std::string_view name;  // also of its folder in corpus/
  void (*feed)(std::string_view bytes);
};

inline constexpr Target kTargets[] = {
    {"description", ReadDescription}, {"gradient", ReadGradient},  {"shader_file", ReadShaderFile},
    {"audio", AnalyseAudio},          {"outlines", TraceOutlines},
};

}  // namespace krv::fuzz
