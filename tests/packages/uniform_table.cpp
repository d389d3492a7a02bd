#include "packages/uniform_table.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

#include "krv/types.h"

namespace krv::test {
namespace {

using nlohmann::json;

TableParameter ReadParameter(const json& entry, const std::vector<std::string>& all_kinds) {
  TableParameter parameter;
  parameter.name = entry.at("name");
  parameter.type = entry.at("type");
  parameter.unit = entry.value("unit", "");
  parameter.min_value = entry.value("min_value", json());
  parameter.max_value = entry.value("max_value", json());
  parameter.example = entry.at("examples").at(0);
  parameter.other_example = entry.at("examples").at(1);
  for (const std::string& kind : entry.value("kinds", all_kinds)) {
    if (std::find(all_kinds.begin(), all_kinds.end(), kind) == all_kinds.end()) {
      throw std::runtime_error(parameter.name + ": there is no kind " + kind);
    }
    parameter.kinds.insert(kind);
  }
  parameter.needs = entry.value("needs", parameter.needs);
  return parameter;
}

const char* GlslType(int type) {
  switch (type) {
    case kKindInt:
      return "int";
    case kKindFloat:
      return "float";
    case kKindBool:
      return "bool";
    default:
      throw std::runtime_error("no uniform has the type " + std::to_string(type));
  }
}

void AddUniforms(const json& entries, std::map<std::string, std::string>* uniforms) {
  for (const json& entry : entries) uniforms->emplace(entry.at("name"), entry.at("glsl"));
}

TableShader ReadShader(const json& table, const json& entry) {
  TableShader shader;
  shader.kind_parameter = entry.at("kind");
  shader.kinds = entry.at("kinds");
  shader.uniforms.emplace(shader.kind_parameter, "int");
  AddUniforms(table.at("frame"), &shader.uniforms);
  for (const json* list : {&table.at("common"), &entry.at("parameters")}) {
    for (const json& parameter : *list) {
      shader.parameters.push_back(ReadParameter(parameter, shader.kinds));
      const TableParameter& added = shader.parameters.back();
      const auto sets = table.at("sets").find(added.name);
      if (sets != table.at("sets").end()) {
        AddUniforms(*sets, &shader.uniforms);
      } else {
        shader.uniforms.emplace(added.name, GlslType(added.type));
      }
    }
  }
  return shader;
}

}  // namespace

const TableParameter& TableShader::Find(const std::string& name) const {
  const auto found =
      std::find_if(parameters.begin(), parameters.end(),
                   [&name](const auto& parameter) { return parameter.name == name; });
  if (found == parameters.end()) throw std::runtime_error("no parameter " + name);
  return *found;
}

std::map<std::string, TableShader> ReadUniformTable(const std::filesystem::path& file) {
  const json table = json::parse(std::ifstream(file));
  std::map<std::string, TableShader> shaders;
  for (const auto& [name, entry] : table.at("shaders").items()) {
    shaders.emplace(name, ReadShader(table, entry));
  }
  return shaders;
}

}  // namespace krv::test
