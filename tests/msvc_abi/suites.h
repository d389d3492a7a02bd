// The host's services.
#pragma once

#include "interfaces.h"
#include "recorder.h"

namespace abi {

class Memory final : public MemorySuite {
 public:
  void* Allocate(uint64_t size) override;
  void Free(void* block) override;
};

class HostUtil final : public HostUtilSuite {
 public:
  // `level: text`, with the arguments filled in.
  Recorder log;

  int32_t GetHostPath(int32_t kind, char* buffer, int32_t capacity) override;
  void Log(int32_t level, const char* format, ...) override;
};

// Device 0 speaks another API; device 1 speaks OpenGL, unless it is taken away.
class Devices final : public GpuDeviceSuite {
 public:
  static constexpr uint32_t kOpenGlDevice = 1;
  bool has_open_gl = false;
  // Indices asked for that there are none of, and textures asked for that are none.
  int wrong_requests = 0;
  int texture_requests = 0;

  uint32_t GetDeviceCount() override { return has_open_gl ? 2 : 1; }
  int32_t GetDeviceInfo(uint32_t index, DeviceInfo* info) override;
  int32_t GetFrameTexture(uint32_t index, HostFrame* frame, uint32_t* texture) override;
};

class FrameMaker final : public ImageBufferSuite {
 public:
  int created = 0;
  int released = 0;

  HostFrame* CreateFrame(int32_t width, int32_t height, int32_t pixel_type, int32_t form) override;
  void ReleaseFrame(HostFrame* frame) override;
};

class Suites final : public SuiteProvider {
 public:
  // `name version`.
  Recorder requests;
  Memory memory;
  HostUtil util;
  Devices devices;
  FrameMaker frames;

  int32_t AcquireSuite(const char* name, uint32_t version, void** suite) override;
};

}  // namespace abi
