#include "suites.h"

#include "c_library.h"
#include "frame.h"

namespace abi {

void* Memory::Allocate(uint64_t size) { return malloc(size); }

void Memory::Free(void* block) { free(block); }

int32_t HostUtil::GetHostPath(int32_t, char*, int32_t) { return kNothingToDo; }

void HostUtil::Log(int32_t level, const char* format, ...) {
  char text[Recorder::kMaxLength];
  va_list arguments;
  va_start(arguments, format);
  vsnprintf(text, sizeof(text), format, arguments);
  va_end(arguments);
  text[sizeof(text) - 1] = '\0';
  log.Record("%d: %s", level, text);
}

int32_t Devices::GetDeviceInfo(uint32_t index, DeviceInfo* info) {
  if (index >= GetDeviceCount()) {
    ++wrong_requests;
    return kNothingToDo;
  }
  memset(info, 0, sizeof(*info));
  info->api = index == kOpenGlDevice ? kOpenGl : kOtherApi;
  info->memory_bytes = uint64_t{1} << 33;
  snprintf(info->name, sizeof(info->name), "device %u", index);
  return kOk;
}

int32_t Devices::GetFrameTexture(uint32_t index, HostFrame* frame, uint32_t* texture) {
  ++texture_requests;
  // All frames that the plug-in knows are of this class.
  *texture = static_cast<Frame*>(frame)->texture();
  if (index == kOpenGlDevice && *texture != 0) return kOk;
  ++wrong_requests;
  return kNothingToDo;
}

HostFrame* FrameMaker::CreateFrame(int32_t width, int32_t height, int32_t pixel_type,
                                   int32_t form) {
  if (pixel_type != kPixel8 || (form != kInMemory && form != kOnGpu)) return nullptr;
  ++created;
  return new Frame(width, height, static_cast<FrameForm>(form));
}

void FrameMaker::ReleaseFrame(HostFrame* frame) {
  ++released;
  delete static_cast<Frame*>(frame);
}

int32_t Suites::AcquireSuite(const char* name, uint32_t version, void** suite) {
  requests.Record("%s %u", name, version);
  if (strcmp(name, "Memory Allocator Suite") == 0) *suite = &memory;
  if (strcmp(name, "Host Util Suite") == 0) *suite = &util;
  if (strcmp(name, "GPU Device Suite") == 0) *suite = &devices;
  if (strcmp(name, "Image Buffer ALlocator Suite") == 0) *suite = &frames;
  return kOk;
}

}  // namespace abi
