// What the tests of the validator work with: the plug-in, a host around it, contexts to draw in.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "gl_context.h"
#include "krv/effect.h"
#include "plugin_library.h"
#include "registrar.h"
#include "suites.h"
#include "validate/examiner.h"
#include "validate/gl_state.h"
#include "validate/hostile_host.h"

namespace krv::tool {

// Strictness is a number from 1 to 10; checks grow with it at these levels too.
inline constexpr int kBasic = 1;        // one frame, the results of calls: seconds
inline constexpr int kOrdinary = 3;     // what a careless host does
inline constexpr int kThorough = 5;     // what a hostile host does, with some effects
inline constexpr int kLarge = 8;        // frames up to 8192 x 8192, long lives
inline constexpr int kEverything = 10;  // every effect in every check, every byte of a package

struct BenchOptions {
  std::filesystem::path plugin;
  std::vector<std::filesystem::path> packages;  // folders
  int strictness = 1;                           // 1 to 10
};

struct EffectReleaser {
  ReleaseEffectFunction* release = nullptr;
  void operator()(KRVEffect* effect) const { release(effect); }
};

// An instance, given back to the plug-in at the end.
using EffectPtr = std::unique_ptr<KRVEffect, EffectReleaser>;

// Lives in the process of one check and is not destroyed: the plug-in keeps what it was started
// with. On one thread, except where said otherwise.
class Bench {
 public:
  // Loads the plug-in; nothing else. Throws CannotGoOn.
  Bench(BenchOptions options, Examiner* examiner);
  ~Bench();
  Bench(const Bench&) = delete;
  Bench& operator=(const Bench&) = delete;

  Examiner& examiner() { return examiner_; }  // any thread
  const host::PluginLibrary& plugin() const { return *plugin_; }
  const std::vector<std::filesystem::path>& packages() const { return options_.packages; }
  bool Has(int strictness) const { return options_.strictness >= strictness; }
  host::HostServices& services() { return services_; }

  // Starts the plug-in, again if it was started before.
  void Start(const HostPlan& plan = {});
  // Also registers all packages, and makes a context current. Throws CannotGoOn without an effect.
  void Prepare(const HostPlan& plan = {});

  // The registered effects. [after Prepare]
  std::span<const host::EffectListing> effects() const { return effects_; }
  // Those that a check looks at: more with every level, at the highest all.
  std::span<const host::EffectListing> ChosenEffects() const;
  const host::EffectListing& first_effect() const { return effects_.front(); }

  // The kind that creates instances since the last start.
  int32_t device_kind() const;

  // Creates an instance; code 0 is expected. Throws CannotGoOn.
  EffectPtr Create(const std::string& unique_name);  // any thread

  // The context that Prepare has made; destroyed and replaced by a new one, current here.
  host::GlContext& gl() { return *gl_; }
  void LoseContext();
  GlErrors& gl_errors() { return gl_errors_; }

  // A further context, for another thread. Throws CannotGoOn.
  static std::unique_ptr<host::GlContext> MakeContext();

 private:
  void RegisterAll();

  const BenchOptions options_;
  Examiner& examiner_;
  std::unique_ptr<host::PluginLibrary> plugin_;
  host::HostServices services_;
  std::vector<std::unique_ptr<HostileHost>> hosts_;  // the last one counts
  std::vector<host::EffectListing> effects_;
  GlErrors gl_errors_;
  std::unique_ptr<host::GlContext> gl_;
};

}  // namespace krv::tool
