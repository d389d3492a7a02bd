// The services that this host offers to the plug-in.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "krv/suites.h"

namespace krv::host {

// Where the pictures of the host lie.
enum class DeviceUse {
  kMemory,  // in memory; the plug-in sees no GPU device
  kGpu,     // in textures; the plug-in sees one OpenGL device
};

// The folders of HostUtilSuite::GetHostPath, in UTF-8.
struct HostPaths {
  std::string installation;
  std::string ai_models;
  std::string plugins;
};

struct LogLine {
  int32_t level;     // LogLevel
  std::string text;  // formatted, without a line end
};

// The suite provider with its four suites. Lives as long as the plug-in is started.
class HostServices {
 public:
  HostServices(DeviceUse device, HostPaths paths);
  ~HostServices();  // needs the context of the texture frames that are left current
  HostServices(const HostServices&) = delete;
  HostServices& operator=(const HostServices&) = delete;

  // What StartupKRV takes.
  HostContext* context() { return &context_; }

  // Sends every further log line to `sink` as well, on the thread that logs. [main-thread]
  void SetLogSink(std::function<void(const LogLine&)> sink);

  // The log lines since the last call. [any-thread]
  std::vector<LogLine> TakeLog();

  // Frames made through the image buffer suite and not given back. [any-thread]
  size_t LiveFrameCount() const;

  // Deletes the frames that were given back; the plug-in may do that without a context, and a
  // texture needs one. [gl-thread]
  void DeleteReleasedFrames();

 private:
  class Provider;
  class Memory;
  class Images;
  class Util;
  class Devices;

  std::unique_ptr<Memory> memory_;
  std::unique_ptr<Images> images_;
  std::unique_ptr<Util> util_;
  std::unique_ptr<Devices> devices_;
  std::unique_ptr<Provider> provider_;
  HostContext context_;
};

}  // namespace krv::host
