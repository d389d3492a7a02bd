// A loaded and started plug-in with everything it needs around it: services, packages, context.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "gl_context.h"
#include "plugin_library.h"
#include "registrar.h"
#include "suites.h"

namespace krv::host {

struct PluginHostOptions {
  std::filesystem::path plugin;  // the plug-in's file
  DeviceUse device = DeviceUse::kMemory;
  GlContext::Renderer renderer = GlContext::Renderer::kAny;
};

// The plug-in keeps its registry and the services it was started with per process: have one object
// of this class at a time. All calls on one thread.
class PluginHost {
 public:
  // Loads the plug-in and starts it. Null on failure, with one line in *error.
  static std::shared_ptr<PluginHost> Create(const PluginHostOptions& options, std::string* error);

  // Shuts the plug-in down. The library stays loaded until the process ends. No effect may be left.
  ~PluginHost();
  PluginHost(const PluginHost&) = delete;
  PluginHost& operator=(const PluginHost&) = delete;

  // Registers every package under `folder`. What was registered earlier under the same unique name
  // stays. False, with one line in *error, when there is no package, or when a description cannot
  // be read; the other packages are registered all the same.
  bool RegisterPackages(const std::filesystem::path& folder, std::string* error);

  // Every registered effect, in order of registration, as the plug-in announces it.
  std::vector<EffectListing> ListEffects() const;

  // Creates the OpenGL context on first use and makes it current on the calling thread. False on
  // failure, with one line in *error.
  bool MakeContextCurrent(std::string* error);

  // GL_RENDERER and GL_VERSION; empty before MakeContextCurrent.
  std::string ContextDescription() const;

  // The plug-in's error lines since the last call, as one line; empty when there are none.
  std::string TakeErrors();

  const PluginLibrary& plugin() const { return *plugin_; }
  HostServices& services() { return *services_; }
  DeviceUse device() const { return options_.device; }

 private:
  explicit PluginHost(const PluginHostOptions& options) : options_(options) {}

  // One call of the plug-in; its result.
  int32_t RegisterFolder(const std::filesystem::path& folder, std::string* error);

  PluginHostOptions options_;
  std::unique_ptr<GlContext> context_;
  std::unique_ptr<HostServices> services_;
  std::unique_ptr<PluginLibrary> plugin_;
};

}  // namespace krv::host
