#include "plugin_host.h"

#include "model_folder.h"
#include "package_files.h"
#include "platform/process.h"
#include "utf8_path.h"

namespace krv::host {
namespace {

// A log line as part of a message: without the tag that the plug-in puts in front.
std::string WithoutTag(const std::string& text) {
  constexpr std::string_view kEndOfTag = "> ";
  if (!text.starts_with("<")) return text;
  const size_t end = text.find(kEndOfTag);
  return end == std::string::npos ? text : text.substr(end + kEndOfTag.size());
}

HostPaths PathsFor(const std::filesystem::path& plugin) {
  const std::filesystem::path program = platform::ExecutableFolder();
  std::error_code code;
  return {.installation = Utf8(program),
          .ai_models = Utf8(ModelFolder(program)),
          .plugins = Utf8(std::filesystem::absolute(plugin, code).parent_path())};
}

}  // namespace

std::shared_ptr<PluginHost> PluginHost::Create(const PluginHostOptions& options,
                                               std::string* error) {
  std::shared_ptr<PluginHost> host(new PluginHost(options));
  host->plugin_ = PluginLibrary::Load(options.plugin, error);
  if (host->plugin_ == nullptr) return nullptr;
  host->services_ = std::make_unique<HostServices>(options.device, PathsFor(options.plugin));
  PluginInfo info{};
  const int32_t code = host->plugin_->startup(host->services_->context(), &info);
  if (code != kOk) {
    *error =
        "plug-in " + Utf8(options.plugin) + ": does not start (code " + std::to_string(code) + ")";
    return nullptr;
  }
  return host;
}

PluginHost::~PluginHost() {
  if (context_ != nullptr) context_->MakeCurrent();
  if (services_ != nullptr) plugin_->shutdown();
}

bool PluginHost::RegisterPackages(const std::filesystem::path& folder, std::string* error) {
  int32_t code = RegisterFolder(folder, error);
  if (code == kOk) return true;
  const std::vector<std::filesystem::path> packages = FindPackageFolders(folder);
  if (code == kNothingToDo || packages.size() < 2) return false;
  // The plug-in stops at the first package that it cannot read; the others may well be whole.
  size_t broken = 0;
  for (const std::filesystem::path& package : packages) {
    std::string reason;
    code = RegisterFolder(package, &reason);
    if (code == kOk || code == kNothingToDo) continue;
    if (broken++ == 0) *error = reason;
  }
  if (broken > 1) *error += " (and " + std::to_string(broken - 1) + " more)";
  return false;
}

int32_t PluginHost::RegisterFolder(const std::filesystem::path& folder, std::string* error) {
  TakeErrors();
  RecordingRegistrar announced;
  const std::string path = Utf8(folder);
  const int32_t code = plugin_->register_effect_from_conf_path(path.c_str(), &announced);
  if (code == kNothingToDo) {
    *error = path + ": there is no effect package in this folder";
  } else if (code != kOk) {
    *error = path + ": the package cannot be read: " + TakeErrors();
  }
  return code;
}

std::vector<EffectListing> PluginHost::ListEffects() const {
  std::vector<EffectListing> effects;
  for (uint32_t index = 0;; ++index) {
    RecordingRegistrar announced;
    if (plugin_->register_effect(index, &announced) != kOk) return effects;
    effects.push_back(announced.effect());
  }
}

bool PluginHost::MakeContextCurrent(std::string* error) {
  if (context_ == nullptr) {
    context_ = GlContext::Create(options_.renderer, error);
    if (context_ == nullptr) return false;
  }
  if (context_->MakeCurrent()) return true;
  *error = "the OpenGL context cannot be made current on this thread";
  return false;
}

std::string PluginHost::ContextDescription() const {
  return context_ == nullptr ? std::string() : context_->Description();
}

std::string PluginHost::TakeErrors() {
  std::string errors;
  for (const LogLine& line : services_->TakeLog()) {
    if (line.level < kLogError) continue;
    if (!errors.empty()) errors += "; ";
    errors += WithoutTag(line.text);
  }
  return errors;
}

}  // namespace krv::host
