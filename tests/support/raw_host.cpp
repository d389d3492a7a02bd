#include "support/raw_host.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>

namespace krv::test {
namespace {

constexpr int32_t kResultNobodyReads = 77;

}  // namespace

RawHost::RawHost() : context_{nullptr, &provider_} {
  static const RawFunction provider_table[] = {Slot(AcquireSuite)};
  static const RawFunction host_util_table[] = {Slot(GetHostPath), Slot(Log)};
  static const RawFunction gpu_device_table[] = {Slot(GetDeviceCount), Slot(GetDeviceInfo),
                                                 Slot(Unexpected)};
  static const RawFunction unused_table[] = {Slot(Unexpected), Slot(Unexpected)};
  provider_ = {provider_table, this};
  host_util_ = {host_util_table, this};
  gpu_device_ = {gpu_device_table, this};
  memory_ = {unused_table, this};
  image_buffer_ = {unused_table, this};
}

int32_t RawHost::AcquireSuite(Object* self, const char* name, uint32_t version, void** suite) {
  RawHost& host = *self->owner;
  host.suite_requests.push_back({name, version});
  const std::map<std::string, Object*> suites = {
      {"Memory Allocator Suite", &host.memory_},
      {"Image Buffer ALlocator Suite", &host.image_buffer_},
      {"Host Util Suite", &host.host_util_},
      {"GPU Device Suite", &host.gpu_device_},
  };
  const auto found = suites.find(name);
  if (found != suites.end() && !host.missing_suites.contains(name)) *suite = found->second;
  return kResultNobodyReads;
}

int32_t RawHost::GetHostPath(Object*, int32_t, char*, int32_t) { return kResultNobodyReads; }

void RawHost::Log(Object* self, int32_t level, const char* format, ...) {
  char text[8192];
  va_list arguments;
  va_start(arguments, format);
  // The analyser misses that va_start initialises it.
  // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized)
  std::vsnprintf(text, sizeof(text), format, arguments);
  va_end(arguments);
  self->owner->log.push_back({level, format, text});
}

uint32_t RawHost::GetDeviceCount(Object* self) {
  RawHost& host = *self->owner;
  const auto count = static_cast<uint32_t>(host.device_apis.size());
  return host.device_counts++ == 0 ? count : count - host.vanishing_devices;
}

int32_t RawHost::GetDeviceInfo(Object* self, uint32_t index, void* info) {
  RawHost& host = *self->owner;
  host.device_requests.push_back(index);
  std::memset(info, 0, 256);
  std::memcpy(info, &host.device_apis.at(index), sizeof(uint32_t));
  return 0;
}

void RawHost::Unexpected() {
  std::fputs("the plug-in called an operation that it must not call here\n", stderr);
  std::abort();
}

}  // namespace krv::test
