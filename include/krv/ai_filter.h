// The AI filter plug-in: a file of its own, beside the plug-in of the effects, that finds people in
// pictures. It exports the two functions below, by unmangled name. A host never calls them; the
// plug-in of the effects does, for frames that come without a mask of the host's.
//
// Pictures and masks have four 8-bit channels, blue, green, red and alpha, and their top row first;
// a stride is in bytes. No exception leaves the functions.
#pragma once

#include <cstdint>

#include "krv/export.h"

namespace krv {

inline constexpr char kAiFilterFileName[] = "krvAiFilterPlugin.krv";
inline constexpr char kAiFilterGuid[] = "2193B116-1AD4-49F4-84A1-FFA3CB983A94";

// A network in the folder of AI models that the filter uses in the place of what it has built in.
inline constexpr char kPersonModelFileName[] = "person_segmentation.onnx";

// Function types, for looking the functions up in a loaded library.
using CreateAiFilterFunction = void*(const char* guid, const char* folder);
using AiFilterTransformFunction = int32_t(void* filter, uint8_t* out, int32_t out_width,
                                          int32_t out_height, int32_t out_stride, const uint8_t* in,
                                          int32_t in_width, int32_t in_height, int32_t in_stride,
                                          const uint8_t* in2, int32_t in2_width, int32_t in2_height,
                                          int32_t in2_stride);

}  // namespace krv

extern "C" {

// [any-thread] A new filter, which lives until the process ends, or null when `guid` is not
// kAiFilterGuid. `folder` is the host's folder of AI models, UTF-8; null and empty mean none. A
// model in it that cannot be used is reported on the standard error output, once for each filter,
// and the filter works without it.
KRV_EXPORT void* CreateNLEAIEffectFilterFromGUID(const char* guid, const char* folder);

// [any-thread] Writes the mask of the people in the input picture: all four channels 255 where one
// is, 0 elsewhere, everywhere when there is nobody. The mask covers the whole picture, whatever the
// two sizes are. The second input is the same picture again; it is checked and not read. The
// buffers must not overlap.
//
// Returns 0 when the mask is written. Anything else, and `out` as it was: a null argument, a size
// below 1, a stride below four bytes a pixel, or an error inside, after which the filter can be
// used as before. Calls on one filter wait for each other.
//
// Without a model a mask depends on the pictures before it as well: people are held on to while
// they are lost for a few pictures of a shot, and edges are smoothed over time. A picture that
// looks unlike the one before it, or has another size, starts afresh; the same picture again gives
// the same mask. With a model every mask is that of its picture alone.
KRV_EXPORT int32_t NLEEffectFilterTransform(void* filter, uint8_t* out, int32_t out_width,
                                            int32_t out_height, int32_t out_stride,
                                            const uint8_t* in, int32_t in_width, int32_t in_height,
                                            int32_t in_stride, const uint8_t* in2,
                                            int32_t in2_width, int32_t in2_height,
                                            int32_t in2_stride);
}
