// Log lines through the host.
#pragma once

#include <array>
#include <type_traits>

#include "boundary/plugin_registry.h"
#include "krv/suites.h"
#include "krv/types.h"

namespace krv {

inline constexpr char kPluginName[] = "audio_visual";  // also the tag of every log line

// Bytes, with the NUL, of a format with its tag. What is longer is cut.
using TaggedLogFormat = std::array<char, 4096>;

// "<audio_visual> " and the format.
TaggedLogFormat TagLogFormat(const char* format);

// printf-style. Does nothing when the host has no log. The format is a constant of the plug-in;
// texts from elsewhere are arguments of a "%s". [any-thread]
template <class... Args>
void LogToHost(LogLevel level, const char* format, Args... args) {
  static_assert(((std::is_arithmetic_v<Args> || std::is_pointer_v<Args>)&&...),
                "only numbers and pointers pass through a variadic call");
  HostUtilSuite* host = PluginRegistry::Instance().host_util_suite;
  if (host == nullptr) return;
  host->Log(level, TagLogFormat(format).data(), args...);
}

}  // namespace krv
