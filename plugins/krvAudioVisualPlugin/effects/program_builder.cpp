#include "effects/program_builder.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "boundary/host_log.h"
#include "effects/folded_shader.h"
#include "effects/shader_file.h"
#include "graphics/px_program.h"
#include "shaders/builtin_shaders.h"

namespace krv {
namespace {

// The part after the last backslash, the separator that package paths are joined with.
std::string_view BaseName(std::string_view path) {
  const size_t separator = path.rfind('\\');
  return separator == std::string_view::npos ? path : path.substr(separator + 1);
}

bool IsBuiltin(const EffectDescription& description, const std::string& path) {
  return description.Version().empty() && FindBuiltinShader(BaseName(path)).has_value();
}

std::optional<std::string> FragmentSource(const EffectDescription& description,
                                          const std::string& path) {
  if (IsBuiltin(description, path)) return std::string(*FindBuiltinShader(BaseName(path)));
  return LoadShaderFile(path, description.package_folder(), description.Enciphered());
}

std::optional<std::string> VertexSource(const EffectDescription& description) {
  const std::vector<std::string> paths = description.VertexShaderPaths();
  if (paths.empty()) return std::string();
  auto source =
      LoadShaderFile(paths.front(), description.package_folder(), description.Enciphered());
  if (!source) LogToHost(kLogError, "Decode file error : %s", paths.front().c_str());
  return source;
}

// An empty entry leaves the package folder and its separator.
bool NamesNoFile(const EffectDescription& description, const std::string& blend_script) {
  return blend_script.empty() || blend_script == description.package_folder() + '\\';
}

std::shared_ptr<PXProgram> BuildBlend(const EffectDescription& description,
                                      const std::string& vertex_source) {
  const std::string path = description.BlendScriptPath();
  if (NamesNoFile(description, path)) {
    auto program = CreateProgram(std::string(DefaultBlendShader()), vertex_source);
    if (program == nullptr) LogToHost(kLogError, "Create blend program error : %s", "default");
    return program;
  }
  auto source = LoadShaderFile(path, description.package_folder(), description.Enciphered());
  if (!source) {
    LogToHost(kLogError, "Decode blend file error : %s", path.c_str());
    return nullptr;
  }
  auto program = CreateProgram(std::move(*source), vertex_source);
  if (program == nullptr) LogToHost(kLogError, "Create blend program error : %s", path.c_str());
  return program;
}

std::unique_ptr<PassRecord> BuildPass(const EffectDescription& description, const std::string& path,
                                      const std::string& vertex_source) {
  auto source = FragmentSource(description, path);
  if (!source) {
    LogToHost(kLogError, "Decode file error : %s", path.c_str());
    return nullptr;
  }
  auto pass = std::make_unique<PassRecord>();
  pass->program = CreateProgram(std::move(*source), vertex_source);
  if (pass->program == nullptr) {
    LogToHost(kLogError, "Create program error : %s", path.c_str());
    return nullptr;
  }
  pass->samplers = SamplerNames(*pass->program);
  pass->is_builtin = IsBuiltin(description, path);
  // The folded form has a vertex shader of its own.
  if (vertex_source.empty() && pass->is_builtin) {
    pass->folded = FoldedShader::Create(BaseName(path));
  }
  return pass;
}

}  // namespace

bool HasDefaultBlend(const EffectDescription& description) {
  return NamesNoFile(description, description.BlendScriptPath());
}

bool BuildPrograms(const EffectDescription& description, EffectPrograms& programs) {
  const std::optional<std::string> vertex_source = VertexSource(description);
  if (!vertex_source) return false;
  programs.blend = BuildBlend(description, *vertex_source);
  if (programs.blend == nullptr) return false;
  for (const std::string& path : description.FragmentShaderPaths()) {
    auto pass = BuildPass(description, path, *vertex_source);
    if (pass == nullptr) return false;
    programs.passes.push_back(std::move(pass));
  }
  return true;
}

}  // namespace krv
