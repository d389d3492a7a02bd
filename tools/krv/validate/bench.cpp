#include "validate/bench.h"

#include <algorithm>
#include <utility>

#include "platform/process.h"
#include "utf8_path.h"

namespace krv::tool {
namespace {

host::HostPaths PathsFor(const std::filesystem::path& plugin) {
  const std::string program = host::Utf8(host::platform::ExecutableFolder());
  return {program, program, host::Utf8(plugin.parent_path())};
}

}  // namespace

Bench::Bench(BenchOptions options, Examiner* examiner)
    : options_(std::move(options)),
      examiner_(*examiner),
      services_(host::DeviceUse::kGpu, PathsFor(options_.plugin)) {
  examiner_.Step("loading the plug-in");
  std::string error;
  plugin_ = host::PluginLibrary::Load(options_.plugin, &error);
  if (plugin_ == nullptr) throw CannotGoOn(error);
}

Bench::~Bench() = default;

void Bench::Start(const HostPlan& plan) {
  hosts_.push_back(std::make_unique<HostileHost>(plan, services_));
  PluginInfo info{};
  const int32_t code = examiner_.Call(
      "StartupKRV", [&] { return plugin_->startup(hosts_.back()->context(), &info); });
  examiner_.ExpectCode("StartupKRV", code, {kOk});
}

void Bench::RegisterAll() {
  for (const std::filesystem::path& folder : options_.packages) {
    const std::string path = host::Utf8(folder);
    host::RecordingRegistrar announced;
    const int32_t code = examiner_.Call("RegisterKRVEffectFromConfPath", [&] {
      return plugin_->register_effect_from_conf_path(path.c_str(), &announced);
    });
    examiner_.ExpectCode("RegisterKRVEffectFromConfPath", code, {kOk});
  }
  effects_.clear();
  for (uint32_t index = 0;; ++index) {
    host::RecordingRegistrar announced;
    const int32_t code = examiner_.Call(
        "RegisterKRVEffect", [&] { return plugin_->register_effect(index, &announced); });
    if (code != kOk) break;
    effects_.push_back(announced.effect());
  }
  std::sort(effects_.begin(), effects_.end(),
            [](const auto& a, const auto& b) { return a.unique_name < b.unique_name; });
}

void Bench::Prepare(const HostPlan& plan) {
  examiner_.Step("starting up and registering the packages");
  Start(plan);
  RegisterAll();
  if (effects_.empty()) throw CannotGoOn("the plug-in has no effect");
  gl_ = MakeContext();
  gl_->MakeCurrent();
  gl_errors_.Listen();
}

std::span<const host::EffectListing> Bench::ChosenEffects() const {
  if (Has(kEverything)) return effects_;
  const size_t count = Has(kThorough) ? 3 : 1;
  return std::span(effects_).first(std::min(count, effects_.size()));
}

int32_t Bench::device_kind() const {
  return hosts_.back()->plan().HasUsableDevice() ? kDeviceKindGpu : kDeviceKindMemory;
}

EffectPtr Bench::Create(const std::string& unique_name) {
  KRVEffect* effect = nullptr;
  const int32_t code = examiner_.Call("CreateKRVEffect", [&] {
    return plugin_->create_effect(unique_name.c_str(), device_kind(), &effect);
  });
  examiner_.ExpectCode("CreateKRVEffect of \"" + unique_name + "\"", code, {kOk});
  if (effect == nullptr) throw CannotGoOn("there is no instance");
  return {effect, {plugin_->release_effect}};
}

void Bench::LoseContext() {
  gl_.reset();
  gl_ = MakeContext();
  gl_->MakeCurrent();
  gl_errors_.Listen();
}

std::unique_ptr<host::GlContext> Bench::MakeContext() {
  std::string error;
  auto context = host::GlContext::Create(host::GlContext::Renderer::kAny, &error);
  if (context == nullptr || !context->MakeCurrent()) throw CannotGoOn(error);
  context->ClearCurrent();
  return context;
}

}  // namespace krv::tool
