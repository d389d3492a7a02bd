#include "packaging/package_text.h"

#include <algorithm>
#include <utility>

#include "check/package_entry.h"
#include "json_places.h"
#include "package_files.h"
#include "packaging/new_folder.h"
#include "shaders/builtin_shaders.h"
#include "utf8_path.h"

namespace krv::tool {
namespace {

using nlohmann::json;

// A list of texts on one line, as descriptions have them.
std::string ValueText(const json& value) {
  const auto dump = [](const json& part) {
    return part.dump(-1, ' ', false, json::error_handler_t::replace);
  };
  if (!value.is_array()) return dump(value);
  std::string text = "[";
  for (const json& element : value) text += (text.size() > 1 ? ", " : "") + dump(element);
  return text + "]";
}

}  // namespace

PackageText::PackageText(std::filesystem::path folder) : folder_(std::move(folder)) {
  const std::filesystem::path file = folder_ / host::kDescriptionFileName;
  text_ = ReadWholeFile(file);
  json_ = json::parse(text_, nullptr, /*allow_exceptions=*/false);
  if (!json_.is_object()) {
    throw PackagingError(host::Utf8(file) + ": is no description; `krv check` says why");
  }
}

std::string PackageText::Text(const char* key) const {
  const auto found = json_.find(key);
  return found != json_.end() && found->is_string() ? found->get<std::string>() : std::string();
}

std::vector<std::string> PackageText::Texts(const char* key) const {
  std::vector<std::string> texts;
  const auto found = json_.find(key);
  if (found == json_.end() || !found->is_array()) return texts;
  for (const json& text : *found) {
    if (text.is_string()) texts.push_back(text.get<std::string>());
  }
  return texts;
}

bool PackageText::IsBuiltin(const std::string& shader) const {
  return Text("version").empty() && FindBuiltinShader(BuiltinName(shader)).has_value();
}

std::vector<std::filesystem::path> PackageText::ShaderFiles() const {
  std::vector<std::string> names;
  for (const std::string& name : Texts("opengl_frag")) {
    if (!IsBuiltin(name)) names.push_back(name);
  }
  for (const std::string& name : Texts("opengl_vert")) names.push_back(name);
  names.push_back(Text("blend_script"));
  std::vector<std::filesystem::path> files;
  for (const std::string& name : names) {
    if (LeadsOut(name)) {
      throw PackagingError(host::Utf8(folder_ / host::kDescriptionFileName) + ": \"" + name +
                           "\" leads out of the package; copy the file into it");
    }
    const std::filesystem::path file = EntryPath(name).lexically_normal();
    const bool known = std::find(files.begin(), files.end(), file) != files.end();
    if (!name.empty() && !known) files.push_back(file);
  }
  return files;
}

bool PackageText::IsEnciphered() const { return Text("ENCRYPT") == "1"; }

void PackageText::Set(std::string_view key, const json& value) {
  text_ = SetJsonMember(text_, key, ValueText(value)).value();
  json_[std::string(key)] = value;
}

void PackageText::Save() const { ReplaceFile(folder_ / host::kDescriptionFileName, text_); }

}  // namespace krv::tool
