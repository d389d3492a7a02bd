// The host's services, acquired by name once at start-up.
#pragma once

#include <cstdint>

#include "krv/frame.h"
#include "krv/types.h"

namespace krv {

// Names for SuiteProvider::AcquireSuite, matched byte for byte, with kSuiteVersion.
inline constexpr char kMemorySuiteName[] = "Memory Allocator Suite";
inline constexpr char kImageBufferSuiteName[] =
    "Image Buffer ALlocator Suite";  // capital L: so spelt
inline constexpr char kHostUtilSuiteName[] = "Host Util Suite";
inline constexpr char kGpuDeviceSuiteName[] = "GPU Device Suite";
inline constexpr uint32_t kSuiteVersion = 1;

class SuiteProvider {
 public:
  // Slot 0 [main-thread]. Stores the suite in *suite, or leaves it alone when the host has none of
  // that name and version. The result is not examined. A suite lives as long as the plug-in is
  // loaded.
  virtual int32_t AcquireSuite(const char* name, uint32_t version, void** suite) = 0;

 protected:
  ~SuiteProvider() = default;
};

// What a host hands to StartupKRV.
struct HostContext {
  void* host_private;  // not read
  SuiteProvider* suites;
};

// "Memory Allocator Suite".
class MemorySuite {
 public:
  // Slot 0 [any-thread]. `size` bytes, or null.
  virtual void* Allocate(uint64_t size) = 0;
  // Slot 1 [any-thread]. Only for blocks that slot 0 gave; null is ignored.
  virtual void Free(void* block) = 0;

 protected:
  ~MemorySuite() = default;
};

enum HostPathKind : int32_t {
  kHostPathInstallation = 0,
  kHostPathAiModels = 1,
  kHostPathPlugins = 2,
};

// "Host Util Suite".
class HostUtilSuite {
 public:
  // Slot 0 [any-thread]. Writes the path, NUL-terminated, into the `capacity` bytes at `buffer`;
  // an unknown kind leaves the buffer as it is. The result is not examined.
  virtual int32_t GetHostPath(int32_t kind, char* buffer, int32_t capacity) = 0;
  // Slot 1 [any-thread]. printf-style; `level` is a LogLevel.
  virtual void Log(int32_t level, const char* format, ...) = 0;

 protected:
  ~HostUtilSuite() = default;
};

enum DeviceApi : uint32_t {
  kDeviceNone = 0,
  kDeviceOtherApi = 1,
  kDeviceOpenGl = 2,  // the one API this plug-in can use
};

// 256 bytes.
struct DeviceInfo {
  uint32_t api;  // DeviceApi
  uint32_t reserved;
  uint64_t memory_bytes;
  char name[240];
};
static_assert(sizeof(DeviceInfo) == 256);

// "GPU Device Suite".
class GpuDeviceSuite {
 public:
  // Slot 0 [main-thread].
  virtual uint32_t GetDeviceCount() = 0;
  // Slot 1 [main-thread]. Fills *info. 0 on success.
  virtual int32_t GetDeviceInfo(uint32_t index, DeviceInfo* info) = 0;
  // Slot 2 [gl-thread]. Stores in *texture the GL name of a frame of form kFrameOnGpu, valid in the
  // context current on the calling thread for as long as the frame is. 0 on success.
  virtual int32_t GetFrameTexture(uint32_t index, HostFrame* frame, uint32_t* texture) = 0;

 protected:
  ~GpuDeviceSuite() = default;
};

// "Image Buffer ALlocator Suite".
class ImageBufferSuite {
 public:
  // Slot 0 [gl-thread]. A new frame (PixelType, FrameForm), or null. The caller gives it back to
  // slot 1.
  virtual HostFrame* CreateFrame(int32_t width, int32_t height, int32_t pixel_type,
                                 int32_t form) = 0;
  // Slot 1 [any-thread]. Only for frames that slot 0 made; null is ignored.
  virtual void ReleaseFrame(HostFrame* frame) = 0;

 protected:
  ~ImageBufferSuite() = default;
};

}  // namespace krv
