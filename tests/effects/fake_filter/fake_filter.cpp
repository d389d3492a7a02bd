// A library in the place of the AI filter: all of a picture that is red belongs to a person.
#include <algorithm>
#include <cstring>

#include "effects/fake_filter/calls.h"

// Also built with one of its entry points missing.
#ifdef KRV_WITHOUT_CREATE
#define CreateNLEAIEffectFilterFromGUID AnotherFunction
#endif
#ifdef KRV_WITHOUT_TRANSFORM
#define NLEEffectFilterTransform AnotherFunction
#endif

namespace {

krv::test::FilterCalls calls;

bool IsTold(const char* what) { return std::strcmp(calls.folder, what) == 0; }

template <size_t kSize>
void CopyText(char (&to)[kSize], const char* from) {
  std::strncpy(to, from, kSize - 1);
}

void FindRed(const uint8_t* in, int32_t in_stride, uint8_t* out, int32_t out_stride, int32_t width,
             int32_t height) {
  for (int32_t y = 0; y < height; ++y, in += in_stride, out += out_stride) {
    for (int32_t x = 0; x < width; ++x) {
      const uint8_t value = in[4 * x + 2] > 127 ? 255 : 0;
      std::fill_n(out + 4 * x, 4, value);
    }
  }
}

}  // namespace

extern "C" {

__attribute__((visibility("default"))) void* CreateNLEAIEffectFilterFromGUID(const char* guid,
                                                                             const char* folder) {
  ++calls.creations;
  CopyText(calls.guid, guid);
  CopyText(calls.folder, folder);
  calls.created = IsTold(krv::test::kRefuse) ? nullptr : &calls;
  return const_cast<void*>(calls.created);
}

__attribute__((visibility("default"))) int32_t NLEEffectFilterTransform(
    void* filter, uint8_t* out, int32_t out_width, int32_t out_height, int32_t out_stride,
    const uint8_t* in, int32_t in_width, int32_t in_height, int32_t in_stride, const uint8_t* in2,
    int32_t in2_width, int32_t in2_height, int32_t in2_stride) {
  ++calls.transforms;
  calls.filter = filter;
  calls.out = {out, out_width, out_height, out_stride};
  calls.in = {in, in_width, in_height, in_stride};
  calls.in2 = {in2, in2_width, in2_height, in2_stride};
  std::copy_n(in, 4, calls.first_pixel);
  if (!IsTold(krv::test::kWriteNothing)) {
    FindRed(in, in_stride, out, out_stride, std::min(in_width, out_width),
            std::min(in_height, out_height));
  }
  return IsTold(krv::test::kFail) ? 7 : 0;
}

__attribute__((visibility("default"))) krv::test::FilterCalls* GetFilterCalls() { return &calls; }
}
