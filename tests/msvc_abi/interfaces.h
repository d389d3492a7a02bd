// The boundary between host and plug-in as a host's own headers declare it, for a compiler of
// Microsoft's C++ ABI. Nothing here comes from include/krv: the two declarations must meet in the
// built binaries.
//
// One table layout under two C++ ABIs. Both compilers put a pointer to the table of operations
// first in an object and number the operations from 0 in the order of declaration. They differ in
// three things, and the boundary avoids each of them:
//
// - A virtual destructor takes one slot under Microsoft's ABI, called with a word of flags (bit 0:
//   free the memory as well), and two under the other. Only KRVEffect is ever deleted by the other
//   side. There the plug-in declares an ordinary operation `void* Destroy(uint32_t flags)` in slot
//   0; a host of Microsoft's ABI may declare `virtual ~KRVEffect()` instead and use `delete`.
// - Overloads of one name are put into the table in reverse order. No operation is overloaded.
// - A returned record takes a hidden argument at different places. No operation returns one.
//
// KRV_SHIFTED_SLOT puts one operation too many into EffectRegistrar. The checks must notice.
#pragma once

#include <stdint.h>

namespace abi {

enum ResultCode : int32_t { kOk = 0, kNothingToDo = 2, kFailed = 4 };
enum ValueKind : int32_t {
  kInt = 3,
  kInternalInt = 4,
  kFloat = 5,
  kDouble = 6,
  kBool = 7,
  kText = 8,
  kColor = 15,
};
enum PixelType : int32_t { kPixel8 = 0 };
enum FrameForm : int32_t { kInMemory = 0, kOnGpu = 3 };
enum DeviceKind : int32_t { kMemoryDevice = 0, kGpuDevice = 2 };
enum DeviceApi : uint32_t { kOtherApi = 1, kOpenGl = 2 };

struct ParameterValue {
  int32_t kind;
  union {
    int32_t as_int;
    float as_float;
    double as_double;
    uint8_t as_byte;
    const char* as_text;
  };
};
static_assert(sizeof(ParameterValue) == 16);

struct FrameDescription {
  int32_t pixel_type;
  int32_t form;
  int32_t width;
  int32_t height;
  int32_t stride;
};
static_assert(sizeof(FrameDescription) == 20);

struct DeviceInfo {
  uint32_t api;
  uint32_t reserved;
  uint64_t memory_bytes;
  char name[240];
};
static_assert(sizeof(DeviceInfo) == 256);

struct PluginInfo {
  uint32_t interface_version;
  uint32_t plugin_version;
  const char* name;
  const char* vendor;
  const char* description;
  const char* reserved_text;
  uint32_t reserved;
};
static_assert(sizeof(PluginInfo) == 48);

// What the host implements and the plug-in calls.

class SuiteProvider {
 public:
  virtual int32_t AcquireSuite(const char* name, uint32_t version, void** suite) = 0;
};

struct HostContext {
  void* host_private;
  SuiteProvider* suites;
};

class MemorySuite {
 public:
  virtual void* Allocate(uint64_t size) = 0;
  virtual void Free(void* block) = 0;
};

class HostUtilSuite {
 public:
  virtual int32_t GetHostPath(int32_t kind, char* buffer, int32_t capacity) = 0;
  virtual void Log(int32_t level, const char* format, ...) = 0;
};

class HostFrame {
 public:
  virtual int32_t Describe(FrameDescription* out) = 0;
  virtual void* GetPixels() = 0;
  virtual int32_t ReadPixels(void* destination, int32_t destination_stride) = 0;
};

class GpuDeviceSuite {
 public:
  virtual uint32_t GetDeviceCount() = 0;
  virtual int32_t GetDeviceInfo(uint32_t index, DeviceInfo* info) = 0;
  virtual int32_t GetFrameTexture(uint32_t index, HostFrame* frame, uint32_t* texture) = 0;
};

class ImageBufferSuite {
 public:
  virtual HostFrame* CreateFrame(int32_t width, int32_t height, int32_t pixel_type,
                                 int32_t form) = 0;
  virtual void ReleaseFrame(HostFrame* frame) = 0;
};

class EffectRegistrar {
 public:
  virtual int32_t SetEffectNames(const char* unique_name, const char* display_name) = 0;
  virtual int32_t SetEffectFlags(uint32_t flags) = 0;
  virtual int32_t SetEffectOption(int32_t option) = 0;
  virtual int32_t Reserved3() = 0;
#ifdef KRV_SHIFTED_SLOT
  virtual int32_t OneTooMany() { return kOk; }
#endif
  virtual int32_t AddFloatParam(int32_t a, int32_t b, const char* name, const char* label,
                                float minimum, float maximum, float initial, uint32_t hidden) = 0;
  virtual int32_t AddIntParam(int32_t a, int32_t b, const char* name, const char* label,
                              int32_t minimum, int32_t maximum, int32_t initial, int32_t c,
                              uint32_t hidden) = 0;
  virtual int32_t AddColorParam(int32_t a, int32_t b, const char* name, const char* label,
                                int32_t initial, int32_t minimum, int32_t maximum,
                                uint32_t hidden) = 0;
  virtual int32_t AddBoolParam(int32_t a, int32_t b, const char* name, const char* label,
                               uint8_t initial, uint32_t hidden) = 0;
  virtual int32_t Reserved8() = 0;
  virtual int32_t Reserved9() = 0;
  virtual int32_t Reserved10() = 0;
  virtual int32_t Reserved11() = 0;
  virtual int32_t Reserved12() = 0;
  virtual int32_t Reserved13() = 0;
  virtual int32_t AddStringParam(int32_t a, int32_t b, const char* name, const char* label,
                                 const char* initial, uint32_t hidden) = 0;
};

class AudioBlock {
 public:
  virtual uint32_t GetChannelCount() = 0;
  virtual int32_t GetSampleFrames() = 0;
  virtual int32_t GetSampleRate() = 0;
  virtual int64_t GetStartSample() = 0;
  virtual const int16_t* GetSamples() = 0;
};

class EffectContext {
 public:
  virtual int64_t GetFrameIndex() = 0;
  virtual void GetFrameRate(int64_t* numerator, int64_t* denominator) = 0;
  virtual HostFrame* GetOutputFrame() = 0;
  virtual HostFrame* GetInputFrame() = 0;
  virtual AudioBlock* GetAudioBlock() = 0;
  virtual int32_t GetParameterValue(const char* name, int64_t position, ParameterValue* value) = 0;
  virtual int32_t QueryProperty(const char* name, int32_t type, void* result, uint32_t size) = 0;
  virtual void RequestExtraInput(uint32_t value) = 0;
};

// What the plug-in implements and the host calls. Slots 12 to 16 are not the host's.
class KRVEffect {
 public:
  virtual ~KRVEffect() = default;
  virtual int32_t Initialize(EffectContext* context) = 0;
  virtual int32_t Reserved2(EffectContext* context) = 0;
  virtual int32_t ClearInputs() = 0;
  virtual int32_t ProcessFrame(EffectContext* context) = 0;
  virtual int32_t ProcessFrameAgain(EffectContext* context) = 0;
  virtual int32_t Reserved6(EffectContext* context) = 0;
  virtual int32_t ReleaseResources() = 0;
  virtual int32_t Reserved8(EffectContext* context) = 0;
  virtual int32_t Reserved9(EffectContext* context) = 0;
  virtual int32_t ApplyParameters(EffectContext* context) = 0;
  virtual int32_t SetUniform(const char* name, const ParameterValue* value) = 0;
};

}  // namespace abi
