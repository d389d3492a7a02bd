// What the built-in shaders read: packages/uniforms.json.
#pragma once

#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace krv::test {

// One parameter that a package of a shader may have.
struct TableParameter {
  std::string name;
  int type = 0;              // the kind code of its values
  std::string unit;          // empty for mere numbers
  nlohmann::json min_value;  // null for booleans and texts
  nlohmann::json max_value;
  nlohmann::json example;  // two values that look different
  nlohmann::json other_example;
  std::set<std::string> kinds;                  // the kinds of figure that read it
  std::map<std::string, nlohmann::json> needs;  // values of other parameters
};

struct TableShader {
  std::string kind_parameter;                   // chooses among the kinds by its number
  std::vector<std::string> kinds;               // by number
  std::vector<TableParameter> parameters;       // without the one that chooses
  std::map<std::string, std::string> uniforms;  // every uniform and its GLSL type

  const TableParameter& Find(const std::string& name) const;
};

// By the shader's file name. Throws when the file is not as it should be.
std::map<std::string, TableShader> ReadUniformTable(const std::filesystem::path& file);

}  // namespace krv::test
