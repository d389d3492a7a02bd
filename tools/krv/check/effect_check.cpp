#include "check/effect_check.h"

#include <algorithm>
#include <string>
#include <vector>

#include "check/check_scene.h"
#include "check/description_lint.h"
#include "check/package_entry.h"
#include "check/shader_log.h"
#include "effect_session.h"
#include "package_copy.h"
#include "package_files.h"
#include "platform/file_system.h"
#include "platform/stdout_capture.h"
#include "utf8_path.h"

namespace krv::tool {
namespace {

using host::PackageChanges;

// An instance made from a variant of the package, and what was printed while it was made.
struct Trial {
  std::unique_ptr<host::PackageCopy> copy;
  std::unique_ptr<host::EffectSession> session;  // null when it failed
  std::string output;
  std::string error;  // why it failed
};

class EffectCheck {
 public:
  EffectCheck(const std::shared_ptr<host::PluginHost>& plugin, const DescriptionDocument& document,
              const std::filesystem::path& folder, Findings* findings)
      : plugin_(plugin), document_(document), folder_(folder), findings_(findings) {}

  void Run() {
    const Trial whole = Try({});
    if (CheckShaders(whole)) return;
    if (whole.session != nullptr) {
      Render(whole);
    } else if (!HasErrors(*findings_)) {
      ReportPackage(InTermsOfThePackage(whole.error, whole));
    }
  }

 private:
  // The plug-in keeps the first package of a name for the whole process, so every trial has a name
  // of its own.
  Trial Try(PackageChanges changes) {
    static int count = 0;
    changes.name_suffix = ".check" + std::to_string(++count);
    Trial trial;
    trial.copy = host::PackageCopy::Create(folder_, changes, &trial.error);
    if (trial.copy == nullptr || !plugin_->RegisterPackages(trial.copy->folder(), &trial.error)) {
      return trial;
    }
    auto capture = host::platform::StdoutCapture::Start(&trial.error);
    if (capture == nullptr) return trial;
    trial.session = host::EffectSession::Create(plugin_, trial.copy->unique_name(), &trial.error);
    trial.output = capture->Stop();
    return trial;
  }

  // The plug-in's messages do not say which file they are about, so each shader is built alone.
  // Whether anything was found.
  bool CheckShaders(const Trial& whole) {
    const bool failed = !ParseShaderFailures(whole.output).empty();
    // A file that is missing hides the shaders after it.
    if (!failed && !AnyShaderMissing()) return false;
    const size_t before = findings_->size();
    for (const std::string& entry : TextsOf(document_.json(), "opengl_frag")) {
      if (IsBuiltinShader(document_.json(), entry) || !IsFile(entry)) continue;
      PackageChanges alone;
      alone.fragment_shaders = {entry};
      alone.blend_script = "";
      ReportShader(entry, Try(alone).output);
    }
    for (const std::string& entry : TextsOf(document_.json(), "blend_script")) {
      if (!IsFile(entry)) continue;
      PackageChanges alone;
      alone.fragment_shaders.emplace();
      ReportShader(entry, Try(alone).output);
    }
    // Nothing by itself: the vertex shader does not fit a shader of the plug-in.
    if (failed && findings_->size() == before) ReportShader("", whole.output);
    return failed || AnyShaderMissing();
  }

  // Reports each failure at its file: the vertex shader's at the vertex shader, others at `entry`,
  // which is empty for the plug-in's own shaders.
  void ReportShader(const std::string& entry, const std::string& output) {
    const std::vector<ShaderFailure> failures = ParseShaderFailures(output);
    const bool compiled = std::all_of(
        failures.begin(), failures.end(),
        [](const ShaderFailure& failure) { return failure.stage == ShaderStage::kLink; });
    const std::vector<std::string> vertex = TextsOf(document_.json(), "opengl_vert");
    for (const ShaderFailure& failure : failures) {
      // Linking what did not compile says nothing new.
      if (failure.stage == ShaderStage::kLink && !compiled) continue;
      const bool of_vertex_shader = failure.stage == ShaderStage::kVertex ||
                                    (failure.stage == ShaderStage::kLink && entry.empty());
      const std::string name = of_vertex_shader && !vertex.empty() ? vertex.front() : entry;
      for (const DriverMessage& message : ParseDriverLog(failure.log)) Report(name, message);
    }
  }

  // A message about a vertex shader comes once per program.
  void Report(const std::string& entry, const DriverMessage& message) {
    const auto file =
        entry.empty() ? folder_ / host::kDescriptionFileName : PackageFile(folder_, entry);
    Finding finding{.severity = message.warning ? Severity::kWarning : Severity::kError,
                    .file = host::Utf8(file),
                    .line = entry.empty() ? 0 : message.line,
                    .message = message.text};
    const std::string text = ToText(finding);
    const bool known = std::any_of(findings_->begin(), findings_->end(),
                                   [&text](const Finding& other) { return ToText(other) == text; });
    if (!known) findings_->push_back(std::move(finding));
  }

  // A message about a variant, said about the package itself.
  std::string InTermsOfThePackage(std::string message, const Trial& trial) const {
    if (trial.copy == nullptr) return message;
    const auto replace = [&message](const std::string& from, const std::string& to) {
      for (size_t at = 0; (at = message.find(from, at)) != std::string::npos; at += to.size()) {
        message.replace(at, from.size(), to);
      }
    };
    replace(host::Utf8(trial.copy->folder()), host::Utf8(folder_));
    replace(trial.copy->unique_name(), document_.json().value("unique_name", std::string()));
    return message;
  }

  void ReportPackage(const std::string& message) {
    findings_->push_back(document_.At("", Severity::kError, message));
  }

  void Render(const Trial& trial) {
    CheckScene scene;
    trial.session->SetPersonMask(&scene);
    const host::FrameRequest request = scene.request();
    std::vector<uint8_t> output(static_cast<size_t>(request.input_stride) *
                                static_cast<size_t>(request.height));
    std::string error;
    auto capture = host::platform::StdoutCapture::Start(&error);
    const bool rendered =
        capture != nullptr &&
        trial.session->RenderFrame(request, output.data(), request.input_stride, &error);
    if (!rendered) ReportPackage(InTermsOfThePackage(error, trial));
    if (capture == nullptr) return;
    for (const std::string& line : ParseGlErrors(capture->Stop())) ReportPackage(line);
  }

  bool IsFile(const std::string& entry) const {
    return host::platform::IsFile(PackageFile(folder_, entry));
  }

  bool AnyShaderMissing() const {
    const auto missing = [this](const char* key) {
      const std::vector<std::string> entries = TextsOf(document_.json(), key);
      return std::any_of(entries.begin(), entries.end(), [this](const std::string& entry) {
        return !entry.empty() && !IsBuiltinShader(document_.json(), entry) && !IsFile(entry);
      });
    };
    return missing("opengl_frag") || missing("opengl_vert") || missing("blend_script");
  }

  const std::shared_ptr<host::PluginHost>& plugin_;
  const DescriptionDocument& document_;
  const std::filesystem::path& folder_;
  Findings* findings_;
};

}  // namespace

void CheckEffect(const std::shared_ptr<host::PluginHost>& plugin,
                 const DescriptionDocument& document, const std::filesystem::path& folder,
                 Findings* findings) {
  EffectCheck(plugin, document, folder, findings).Run();
}

}  // namespace krv::tool
