// What the fake filter of these tests tells about its calls.
#pragma once

#include <cstdint>

namespace krv::test {

struct FilterPicture {
  const void* pixels = nullptr;
  int32_t width = 0;
  int32_t height = 0;
  int32_t stride = 0;
};

struct FilterCalls {
  int creations = 0;
  char guid[64] = {};     // of the last creation
  char folder[512] = {};  // of the last creation
  const void* created = nullptr;
  int transforms = 0;
  // Of the last transform.
  const void* filter = nullptr;
  FilterPicture out;
  FilterPicture in;
  FilterPicture in2;
  uint8_t first_pixel[4] = {};  // of the input
};

// Exported by the library next to its entry points.
inline constexpr char kFilterCallsName[] = "GetFilterCalls";
using GetFilterCallsFunction = FilterCalls*();

// What a filter does wrong when the folder of AI models has this name.
inline constexpr char kRefuse[] = "refuse";         // there is no filter
inline constexpr char kFail[] = "fail";             // writes a mask, but results in failure
inline constexpr char kWriteNothing[] = "nothing";  // leaves the mask alone

}  // namespace krv::test
