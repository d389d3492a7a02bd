// The edge that no exception crosses.
#pragma once

#include <cstdint>
#include <exception>
#include <utility>

#include "boundary/host_log.h"
#include "krv/types.h"

namespace krv {

// Runs what a host called and returns its result. An exception becomes one log line with the
// error's text and the result kFailed. Every exported function and every operation of KRVEffect
// that a host calls runs inside one.
template <class Function>
int32_t GuardHostCall(Function&& function) noexcept {
  try {
    return std::forward<Function>(function)();
  } catch (const std::exception& error) {
    LogToHost(kLogError, "%s", error.what());
  } catch (...) {
    LogToHost(kLogError, "%s", "unknown error");
  }
  return kFailed;
}

}  // namespace krv
