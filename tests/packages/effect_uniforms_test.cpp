// What the table of uniforms says of effects that follow a person and of 3-D effects.
#include <gmock/gmock.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "package_files.h"
#include "packages/package_fixture.h"
#include "support/scratch_folder.h"
#include "utf8_path.h"

namespace krv::test {
namespace {

using nlohmann::json;

json ReadJson(const std::filesystem::path& file) { return json::parse(std::ifstream(file)); }

// GLSL that is true when the uniform has been set: nothing that is listed is zero in the scene, and
// no listed texture looks like the frame, which a sampler shows that nobody sets.
std::string IsSet(const std::string& name, const std::string& type) {
  if (name == "mask_tex") {
    return "texture2D(mask_tex, vec2(0.02)).a == 0.0 && texture2D(mask_tex, vec2(0.5, 0.35)).a == "
           "1.0";
  }
  if (name == "mask_point_tex") {
    return "textureSize2D(mask_point_tex, 0) == ivec2(points, 1)";
  }
  if (name == "effect_tex") return "texture2D(effect_tex, vec2(0.5)) == vec4(0.0, 1.0, 0.0, 0.0)";
  if (type == "bool") return name;
  return name + " != " + type + "(0)";
}

std::string Shader(const json& uniform) {
  const std::string name = uniform.at("name");
  const std::string type = uniform.at("glsl");
  const bool counts = name == "mask_point_tex";
  return "#version 120\n#extension GL_EXT_gpu_shader4 : enable\nuniform " + type + " " + name +
         ";\n" + (counts ? "uniform int points_count;\n" : "") + "void main() { " +
         (counts ? "int points = points_count; " : "") + "gl_FragColor = " + IsSet(name, type) +
         " ? vec4(1.0, 1.0, 1.0, 0.99) : vec4(0.0, 0.0, 0.0, 0.99); }\n";
}

constexpr char kNothing[] =
    "#version 120\nvoid main() { gl_FragColor = vec4(0.0, 1.0, 0.0, 0.0); }\n";
constexpr char kVertex[] =
    "#version 120\nattribute vec3 position;\nuniform mat4 projection_mat;\n"
    "void main() { bool blends = projection_mat[2].w == 0.0;\n"
    "gl_Position = vec4(position.xy * (blends ? 2.0 : 8.0) - (blends ? 1.0 : 0.0), 0.0, 1.0); }\n";

class EffectUniforms : public PackageTest {
 protected:
  // Whether the uniform is set in the passes, or in the blend, of an effect of that kind.
  bool Arrives(const std::string& kind, const json& effect, const json& uniform,
               const std::string& stage) {
    static int count = 0;
    const ScratchFolder folder;
    json description = effect.at("description");
    description["effect_type"] = "audio_visualization";
    description["unique_name"] =
        description.value("unique_name", "") + "_uniform_" + std::to_string(count++);
    description["opengl_frag"] = {"pass.frag"};
    description["params"] = json::parse(R"([
      {"name": "point_size", "type": 5, "default_value": 0.2},
      {"name": "point_gap", "type": 5, "default_value": 0.1},
      {"name": "max_length", "type": 3, "default_value": 40}])");
    folder.Write("pass.frag", stage == "passes" ? Shader(uniform) : kNothing);
    if (stage == "blend") {
      description["blend_script"] = "blend.frag";
      folder.Write("blend.frag", Shader(uniform));
    }
    if (kind == "3d_geometry") {
      description["opengl_vert"] = {"mesh.vert"};
      folder.Write("mesh.vert", kVertex);
    }
    folder.Write("description.json", description.dump());
    const auto session = Open(folder.path(), description["unique_name"]);
    return Render(session.get(), {}).Pixel(160, 90)[1] > 200;
  }
};

TEST_F(EffectUniforms, ArriveExactlyWhereTheTableSaysSo) {
  const json table = ReadJson(KRV_PACKAGES "/uniforms.json");
  for (const auto& [kind, effect] : table.at("kinds_of_effects").items()) {
    for (const json& uniform : effect.at("uniforms")) {
      const auto stages = uniform.at("in").get<std::set<std::string>>();
      for (const std::string stage : {"passes", "blend"}) {
        EXPECT_EQ(Arrives(kind, effect, uniform, stage), stages.contains(stage))
            << uniform.at("name") << " in " << stage;
      }
    }
  }
}

// Every uniform of the table and its type.
std::map<std::string, std::string> TableUniforms() {
  const json table = ReadJson(KRV_PACKAGES "/uniforms.json");
  std::map<std::string, std::string> uniforms;
  const auto add = [&uniforms](const json& entries) {
    for (const json& entry : entries) uniforms.emplace(entry.at("name"), entry.at("glsl"));
  };
  add(table.at("frame"));
  for (const json& set : table.at("sets")) add(set);
  for (const json& effect : table.at("kinds_of_effects")) add(effect.at("uniforms"));
  return uniforms;
}

std::string TypeOfParameter(const json& parameter) {
  switch (parameter.at("type").get<int>()) {
    case kKindFloat:
      return "float";
    case kKindBool:
      return "bool";
    default:
      return "int";
  }
}

TEST_F(EffectUniforms, ShippedShadersDeclareNothingElse) {
  int declared = 0;
  for (const auto& folder : host::FindPackageFolders(KRV_PACKAGES)) {
    auto known = TableUniforms();
    const json description = ReadJson(folder / host::kDescriptionFileName);
    for (const json& parameter : description.at("params")) {
      known.insert_or_assign(parameter.at("name"), TypeOfParameter(parameter));
    }
    for (const auto& file : std::filesystem::directory_iterator(folder)) {
      if (file.path().extension() == ".json") continue;
      std::ifstream source(file.path());
      for (std::string line; std::getline(source, line);) {
        std::istringstream words(line);
        std::string keyword, type, name;
        if (!(words >> keyword >> type >> name) || keyword != "uniform") continue;
        EXPECT_EQ(known[name.substr(0, name.find(';'))], type)
            << host::Utf8(file.path()) << ": " << line;
        ++declared;
      }
    }
  }
  EXPECT_GT(declared, 100);
}

}  // namespace
}  // namespace krv::test
