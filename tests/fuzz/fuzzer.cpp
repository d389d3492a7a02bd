// The entry of a fuzzer; KRV_FUZZ_TARGET is the function of targets.h that it feeds.
#include <cstddef>
#include <cstdint>

#include "fuzz/targets.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  krv::fuzz::KRV_FUZZ_TARGET({reinterpret_cast<const char*>(data), size});
  return 0;
}
