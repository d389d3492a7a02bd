#include "packaging/new_package.h"

#include <algorithm>
#include <cctype>
#include <initializer_list>
#include <map>
#include <string_view>

#include "check/package_entry.h"
#include "package_files.h"
#include "packaging/new_folder.h"
#include "packaging/package_text.h"
#include "packaging_files.h"
#include "platform/file_system.h"
#include "shaders/builtin_shaders.h"
#include "utf8_path.h"

namespace krv::tool {
namespace {

namespace fs = std::filesystem;

constexpr char kSchemaFileName[] = "description.schema.json";
constexpr char kTemplateShader[] = "silk.frag";

// By these texts in unique names the plug-in knows effects of special kinds.
constexpr std::string_view kKinds[] = {"audio_visualization_3d_geometry",
                                       "audio_visualization_mask_shape"};

bool IsLetterOrDigit(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte >= 0x80 || std::isalnum(byte) != 0;
}

bool IsNameCharacter(char c) { return c == '_' || c == '-' || IsLetterOrDigit(c); }

// "my_look" as "My look".
std::string TitleOf(std::string name) {
  for (char& c : name) {
    if (c == '_' || c == '-') c = ' ';
  }
  name.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(name.front())));
  return name;
}

// The name, with the kind of the effect that it is a copy of.
std::string UniqueName(std::string name, const std::string& original) {
  for (const std::string_view kind : kKinds) {
    if (original.find(kind) != std::string::npos && name.find(kind) == std::string::npos) {
      name.append("_").append(kind);
    }
  }
  return name;
}

// A name for a built-in shader's file: the plug-in would take the shader's own for the built-in
// one.
std::string FileFor(const std::string& shader, const NewFolder& folder) {
  constexpr std::string_view kPrefix = "audio_visualization_";
  std::string name = shader.starts_with(kPrefix) ? shader.substr(kPrefix.size()) : "my_" + shader;
  while (host::platform::IsFile(folder.path() / name)) name.insert(0, "my_");
  return name;
}

// Writes the built-in shaders of the package into files that it names from now on.
void WriteOutBuiltins(const NewFolder& folder, PackageText* package) {
  std::vector<std::string> shaders = package->Texts("opengl_frag");
  std::map<std::string, std::string> written;  // the file, by the shader
  for (std::string& entry : shaders) {
    if (!package->IsBuiltin(entry)) continue;
    const std::string shader(BuiltinName(entry));
    auto found = written.find(shader);
    if (found == written.end()) {
      const std::string file = FileFor(shader, folder);
      ReplaceFile(folder.path() / file, FindBuiltinShader(shader).value());
      found = written.emplace(shader, file).first;
    }
    entry = found->second;
  }
  if (!written.empty()) package->Set("opengl_frag", shaders);
}

void Collect(const fs::path& folder, const fs::path& below, std::vector<fs::path>* files) {
  const auto entries = host::platform::ListFolder(folder);
  if (!entries) return;
  for (const auto& entry : *entries) {
    const fs::path name = below / entry.path.filename();
    if (entry.is_folder) {
      Collect(entry.path, name, files);
    } else {
      files->push_back(name);
    }
  }
}

NewPackage Finish(const fs::path& schema, const std::string& unique_name, PackageText* package,
                  NewFolder* folder) {
  if (!schema.empty()) ReplaceFile(folder->path() / kSchemaFileName, ReadWholeFile(schema));
  if (!schema.empty() || !package->Text("$schema").empty()) {
    package->Set("$schema", kSchemaFileName);
  }
  package->Set("unique_name", unique_name);
  package->Set("display_name", TitleOf(NameOfPackage(folder->path())));
  package->Save();
  folder->Keep();
  NewPackage made{unique_name, {}};
  Collect(folder->path(), {}, &made.files);
  std::sort(made.files.begin(), made.files.end());
  return made;
}

}  // namespace

std::string NameOfPackage(const fs::path& folder) {
  std::string name = host::Utf8(folder.filename());
  if (name.empty() || !std::all_of(name.begin(), name.end(), IsNameCharacter)) {
    throw PackagingError("\"" + host::Utf8(folder) +
                         "\": give a name of letters, digits, \"_\" and \"-\", such as my_look");
  }
  if (!IsLetterOrDigit(name.front())) {
    throw PackagingError("\"" + host::Utf8(folder) +
                         "\": give a name that begins with a letter or a digit, such as my_look");
  }
  return name;
}

NewPackage MakeFromTemplate(const fs::path& folder, const fs::path& schema) {
  const std::string unique_name = NameOfPackage(folder);
  NewFolder made(folder);
  ReplaceFile(made.path() / host::kDescriptionFileName, files::k_description_json);
  ReplaceFile(made.path() / kTemplateShader, files::k_silk_frag);
  PackageText package(made.path());
  return Finish(schema, unique_name, &package, &made);
}

NewPackage MakeFromEffect(const fs::path& folder, const fs::path& schema, const fs::path& effect) {
  const std::string name = NameOfPackage(folder);
  const PackageText original(effect);
  if (original.IsEnciphered()) {
    throw PackagingError(host::Utf8(effect) + ": its shaders are enciphered and not to be changed");
  }
  NewFolder made(folder);
  CopyInto(effect, made);
  PackageText package(made.path());
  WriteOutBuiltins(made, &package);
  return Finish(schema, UniqueName(name, original.Text("unique_name")), &package, &made);
}

}  // namespace krv::tool
