// A host made of raw tables, which records what is asked of it.
#pragma once

#include <cstdint>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "support/raw_object.h"

namespace krv::test {

struct SuiteRequest {
  std::string name;
  uint32_t version;
  bool operator==(const SuiteRequest&) const = default;
};

struct LogLine {
  int32_t level;
  std::string format;  // as the plug-in passed it
  std::string text;    // with its arguments
};

inline std::ostream& operator<<(std::ostream& out, const LogLine& line) {
  return out << line.level << ": " << line.text;
}

class RawHost {
 public:
  RawHost();
  RawHost(const RawHost&) = delete;
  RawHost& operator=(const RawHost&) = delete;

  // The argument of StartupKRV. The host must stay alive as long as the plug-in knows it.
  void* context() { return context_; }

  // To be set before StartupKRV.
  std::set<std::string> missing_suites;
  std::vector<uint32_t> device_apis;  // one per GPU device
  // How many devices vanish after the count was asked for the first time.
  uint32_t vanishing_devices = 0;

  // What happened.
  std::vector<SuiteRequest> suite_requests;
  std::vector<uint32_t> device_requests;  // indices that GetDeviceInfo was asked for
  int device_counts = 0;                  // how often GetDeviceCount was asked
  std::vector<LogLine> log;

 private:
  using Object = RawObject<RawHost>;

  static int32_t AcquireSuite(Object* self, const char* name, uint32_t version, void** suite);
  static int32_t GetHostPath(Object* self, int32_t kind, char* buffer, int32_t capacity);
  static void Log(Object* self, int32_t level, const char* format, ...);
  static uint32_t GetDeviceCount(Object* self);
  static int32_t GetDeviceInfo(Object* self, uint32_t index, void* info);
  // Stands in every slot that the calls under test must leave alone.
  static void Unexpected();

  Object provider_, host_util_, memory_, image_buffer_, gpu_device_;
  void* context_[2];
};

}  // namespace krv::test
