// A package's description as text, and the shader files that it names.
#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace krv::tool {

class PackageText {
 public:
  // Reads the description of a package's folder. Throws PackagingError.
  explicit PackageText(std::filesystem::path folder);

  // The text at a key; empty when there is none.
  std::string Text(const char* key) const;

  // The texts of the list at a key.
  std::vector<std::string> Texts(const char* key) const;

  // Whether the plug-in takes this entry of "opengl_frag" for one of its own shaders.
  bool IsBuiltin(const std::string& shader) const;

  // The paths of the shader files, relative to the folder, each once; built-in ones are none.
  // Throws PackagingError when one leads out of the folder.
  std::vector<std::filesystem::path> ShaderFiles() const;

  // Whether the shader files are enciphered.
  bool IsEnciphered() const;

  // Changes the value at a key and leaves the rest of the text as it is.
  void Set(std::string_view key, const nlohmann::json& value);

  // Writes the text into the description. Throws PackagingError.
  void Save() const;

 private:
  std::filesystem::path folder_;
  std::string text_;
  nlohmann::json json_;
};

}  // namespace krv::tool
