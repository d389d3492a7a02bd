// A host of the plug-in's parts that are linked into a test: it keeps their log lines.
#pragma once

#include <vector>

#include "boundary/plugin_registry.h"
#include "suites.h"

namespace krv::test {

// Known to the parts for as long as it lives.
class LoggingHost {
 public:
  explicit LoggingHost(const host::HostPaths& paths = {})
      : services_(host::DeviceUse::kMemory, paths) {
    void* suite = nullptr;
    services_.context()->suites->AcquireSuite(kHostUtilSuiteName, kSuiteVersion, &suite);
    PluginRegistry::Instance().host_util_suite = static_cast<HostUtilSuite*>(suite);
  }
  LoggingHost(const LoggingHost&) = delete;
  LoggingHost& operator=(const LoggingHost&) = delete;
  ~LoggingHost() { PluginRegistry::Instance().host_util_suite = nullptr; }

  // The lines since the last call.
  std::vector<host::LogLine> TakeLog() { return services_.TakeLog(); }

 private:
  host::HostServices services_;
};

}  // namespace krv::test
