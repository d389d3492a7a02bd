#include "parameter_text.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <string>

namespace krv::tool {

double ShortestDouble(double number) {
  std::array<char, 64> text{};
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), static_cast<float>(number));
  double shortest = number;
  std::from_chars(text.data(), end.ptr, shortest);
  return shortest;
}

std::string NumberText(ParameterKind kind, double number) {
  if (kind == kKindInt) return std::to_string(static_cast<int32_t>(number));
  std::array<char, 32> text{};
  if (kind == kKindColor) {
    std::snprintf(text.data(), text.size(), "#%06X",
                  static_cast<unsigned>(static_cast<int32_t>(number)));
    return text.data();
  }
  const auto end = std::to_chars(text.data(), text.data() + text.size(), ShortestDouble(number));
  return {text.data(), end.ptr};
}

}  // namespace krv::tool
