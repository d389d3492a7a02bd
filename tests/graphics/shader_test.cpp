#include "graphics/opengl/impl/shader.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "graphics/gl_calls.h"
#include "graphics/opengl/impl/graphics_base.h"
#include "platform/stdout_capture.h"
#include "support/gl_fixture.h"
#include "support/matches_pattern.h"

namespace krv::test {
namespace {

using testing::ElementsAre;

constexpr char kVersion330[] = "#version 330 core\nout vec4 c;\nvoid main() { c = vec4(1); }\n";
constexpr char kEmptyFragment[] = "#version 120\nvoid main() { gl_FragColor = vec4(1.0); }\n";
constexpr char kBroken[] = "#version 120\nvoid main() { this is no GLSL; }\n";

const std::vector<std::string> kOneDefine = {"A"};

TEST(SourceStringsTest, WithoutDefinesASourceIsUnchanged) {
  EXPECT_THAT(GL::SourceStrings(kVersion330, {}), ElementsAre(kVersion330));
}

TEST(SourceStringsTest, WithADefineTheVersionLineIsReplacedAndTheDefineFollows) {
  EXPECT_THAT(GL::SourceStrings(kVersion330, kOneDefine),
              ElementsAre("#version 300 es\n", "#define A\n",
                          "out vec4 c;\nvoid main() { c = vec4(1); }\n"));
}

TEST(SourceStringsTest, WithoutAVersionLineOnlyTheDefinesArePutBefore) {
  EXPECT_THAT(GL::SourceStrings("void main() {}\n", kOneDefine),
              ElementsAre("#define A\n", "void main() {}\n"));
}

TEST(SourceStringsTest, DefinesKeepTheirOrder) {
  const std::vector<std::string> defines = {"B 2", "A 1"};
  EXPECT_THAT(GL::SourceStrings("x", defines), ElementsAre("#define B 2\n", "#define A 1\n", "x"));
}

TEST(SourceStringsTest, AVersionAnywhereInTheFirstLineCounts) {
  EXPECT_THAT(GL::SourceStrings("  #version 120\nrest", kOneDefine),
              ElementsAre("#version 300 es\n", "#define A\n", "rest"));
}

TEST(SourceStringsTest, AVersionInTheSecondLineDoesNotCount) {
  EXPECT_THAT(GL::SourceStrings("// first\n#version 120\n", kOneDefine),
              ElementsAre("#define A\n", "// first\n#version 120\n"));
}

TEST(SourceStringsTest, ASourceThatIsOnlyAVersionLineLeavesNothing) {
  EXPECT_THAT(GL::SourceStrings("#version", kOneDefine),
              ElementsAre("#version 300 es\n", "#define A\n", ""));
}

// What the last compilations handed to glShaderSource.
std::vector<std::vector<std::string>> handed_over;

void GLAD_API_PTR RecordSource(GLuint /*shader*/, GLsizei count, const GLchar* const* strings,
                               const GLint* /*lengths*/) {
  handed_over.emplace_back(strings, strings + count);
}

class ShaderTest : public GlTest {
 protected:
  // What compiling these prints.
  static std::string Messages(const std::string& vertex, const std::string& fragment) {
    std::string error;
    const auto capture = host::platform::StdoutCapture::Start(&error);
    EXPECT_NE(capture, nullptr) << error;
    const auto shader = GL::Shader::Compile(vertex, fragment, {});
    std::string text = capture->Stop();
    EXPECT_NE(shader, nullptr) << "a program is returned all the same";
    EXPECT_TRUE(glIsProgram(shader->name()));
    return text;
  }
};

TEST_F(ShaderTest, GlReceivesTheSourceStringsOfBothStages) {
  const auto real = glad_glShaderSource;
  handed_over.clear();
  glad_glShaderSource = RecordSource;
  GL::Shader::Compile("#version 330\nv", "#version 330\nf", kOneDefine);
  GL::Shader::Compile("#version 330\nv", "#version 330\nf", {});
  glad_glShaderSource = real;
  EXPECT_THAT(handed_over,
              ElementsAre(ElementsAre("#version 300 es\n", "#define A\n", "v"),
                          ElementsAre("#version 300 es\n", "#define A\n", "f"),
                          ElementsAre("#version 330\nv"), ElementsAre("#version 330\nf")));
}

TEST_F(ShaderTest, TheDefaultVertexSourceIsKeptToTheByte) {
  EXPECT_STREQ(
      GL::kDefaultVertexSource,
      "  #version 120\n\n            #if __VERSION__ == 120 || __VERSION__ == 100 \n"
      "            attribute vec2 position; \n            varying vec2 tc; \n"
      "            #else\n            in vec2 position; \n            out vec2 tc;\n"
      "            #endif\n            \n            void main()\n            { \n"
      "              gl_Position = vec4(2.0 * position.x - 1.0, 2.0 * position.y - 1.0, -1.0, "
      "1.0);\n              tc = position.xy; \n            }\n    ");
}

TEST_F(ShaderTest, SoundSourcesPrintNothing) {
  EXPECT_EQ(Messages(GL::kDefaultVertexSource, kEmptyFragment), "");
}

TEST_F(ShaderTest, AFailedVertexStageIsPrintedWithTheDriversLog) {
  EXPECT_THAT(Messages(kBroken, kEmptyFragment),
              MatchesPattern("Shader compiler failed \\(vert\\) : (.|\n)*error(.|\n)*\n"
                             "Shader compiler failed \\(link status\\) : (.|\n)+\n"));
}

TEST_F(ShaderTest, AFailedFragmentStageIsPrintedWithTheDriversLog) {
  EXPECT_THAT(Messages(GL::kDefaultVertexSource, kBroken),
              MatchesPattern("Shader compiler failed \\(frag\\) : (.|\n)*error(.|\n)*\n"
                             "Shader compiler failed \\(link status\\) : (.|\n)+\n"));
}

TEST_F(ShaderTest, AFailedLinkOfSoundStagesIsPrintedAlone) {
  const std::string fragment =
      "#version 120\nvarying vec3 absent;\nvoid main() { gl_FragColor = vec4(absent, 1.0); }\n";
  EXPECT_THAT(Messages(GL::kDefaultVertexSource, fragment),
              MatchesPattern("Shader compiler failed \\(link status\\) : (.|\n)+\n"));
}

TEST_F(ShaderTest, ALogIsCutAt1024Bytes) {
  std::string many_errors = "#version 120\nvoid main() {\n";
  for (int i = 0; i < 200; ++i) many_errors += "undeclared_" + std::to_string(i) + " = 1.0;\n";
  const std::string text = Messages(GL::kDefaultVertexSource, many_errors + "}\n");
  const std::string first = "Shader compiler failed (frag) : ";
  const size_t end = text.find("Shader compiler failed (link status)");
  ASSERT_NE(end, std::string::npos);
  EXPECT_EQ(end, first.size() + 1023 + 1)
      << "1023 characters, the closing zero, and an end of line";
}

TEST_F(ShaderTest, TheHandleDeletesTheProgram) {
  auto shader = GL::Shader::Compile(GL::kDefaultVertexSource, kEmptyFragment, {});
  const uint32_t name = shader->name();
  shader.reset();
  EXPECT_FALSE(glIsProgram(name));
}

TEST_F(ShaderTest, NoShaderObjectOutlivesCompiling) {
  const GlCalls<glad_glCreateShader> made;
  const GlCalls<glad_glDeleteShader> deleted;
  GL::Shader::Compile(kBroken, kBroken, {});
  EXPECT_EQ(made.count(), 2);
  EXPECT_EQ(deleted.count(), 2);
}

constexpr char kAllTypes[] =
    "#version 120\nuniform int i; uniform float f; uniform sampler2D s2; uniform sampler3D s3;\n"
    "uniform samplerCube sc; uniform vec2 v2; uniform vec3 v3; uniform vec4 v4; uniform mat2 m2;\n"
    "uniform mat3 m3; uniform mat4 m4; uniform bool b; uniform ivec2 i2;\n"
    "void main() {\n"
    "  gl_FragColor = vec4(float(i) + f) + texture2D(s2, v2) + texture3D(s3, v3) +\n"
    "      textureCube(sc, v3) + v4 + vec4(m2[0], m2[1]) + vec4(m3[0] + m3[1] + m3[2], 1.0) +\n"
    "      m4 * v4 + vec4(b ? 1.0 : 0.0) + vec4(vec2(i2), 0.0, 0.0);\n"
    "}\n";

TEST_F(ShaderTest, TheUniformTableHasEveryActiveUniformWithItsTypeAndLocation) {
  using Type = GL::ShaderVarType;
  const auto shader = GL::Shader::Compile(GL::kDefaultVertexSource, kAllTypes, {});
  const std::vector<std::pair<std::string, Type>> expected = {
      {"i", Type::kInt},        {"f", Type::kFloat},        {"s2", Type::kSampler2D},
      {"s3", Type::kSampler3D}, {"sc", Type::kSamplerCube}, {"v2", Type::kVec2},
      {"v3", Type::kVec3},      {"v4", Type::kVec4},        {"m2", Type::kMat2},
      {"m3", Type::kMat3},      {"m4", Type::kMat4},        {"b", Type::kOther},
      {"i2", Type::kOther}};
  EXPECT_EQ(shader->uniforms().size(), expected.size());
  for (const auto& [name, type] : expected) {
    const auto has_name = [&](const GL::ShaderVariable& v) { return v.name == name; };
    const auto& table = shader->uniforms();
    const auto found = std::find_if(table.begin(), table.end(), has_name);
    ASSERT_NE(found, table.end()) << name;
    EXPECT_EQ(found->type, type) << name;
    EXPECT_EQ(found->location, glGetUniformLocation(shader->name(), name.c_str())) << name;
    EXPECT_EQ(shader->UniformLocation(name), found->location) << name;
  }
}

TEST_F(ShaderTest, TheTypeCodesAreTheOnesOfTheTable) {
  using Type = GL::ShaderVarType;
  const std::vector<Type> types = {Type::kOther,     Type::kInt,       Type::kFloat,
                                   Type::kSampler2D, Type::kSampler3D, Type::kSamplerCube,
                                   Type::kVec2,      Type::kVec3,      Type::kVec4,
                                   Type::kMat2,      Type::kMat3,      Type::kMat4};
  std::vector<uint32_t> codes;
  for (const Type type : types) codes.push_back(static_cast<uint32_t>(type));
  EXPECT_THAT(codes, ElementsAre(0, 2, 3, 5, 6, 7, 8, 9, 10, 11, 12, 13));
}

TEST_F(ShaderTest, TheAttributeTableHasTheDefaultPositionAtZero) {
  const auto shader = GL::Shader::Compile(GL::kDefaultVertexSource, kEmptyFragment, {});
  ASSERT_EQ(shader->attributes().size(), 1U);
  EXPECT_EQ(shader->attributes()[0].name, "position");
  EXPECT_EQ(shader->attributes()[0].type, GL::ShaderVarType::kVec2);
  EXPECT_EQ(shader->AttributeLocation("position"), 0);
}

TEST_F(ShaderTest, ANameIsFoundOnlyWhenItMatchesExactly) {
  const auto shader = GL::Shader::Compile(GL::kDefaultVertexSource, kAllTypes, {});
  EXPECT_EQ(shader->UniformLocation("v"), -1);
  EXPECT_EQ(shader->UniformLocation("V2"), -1);
  EXPECT_EQ(shader->UniformLocation("v22"), -1);
  EXPECT_EQ(shader->UniformLocation(""), -1);
  EXPECT_EQ(shader->AttributeLocation("posit"), -1);
}

TEST_F(ShaderTest, SettingAUniformThatTheProgramLacksMakesNoGlCall) {
  const auto shader = GL::Shader::Compile(GL::kDefaultVertexSource, kEmptyFragment, {});
  const float floats[16] = {};
  const AnyGlCalls calls;
  shader->SetInt("absent", 1);
  shader->SetFloat("absent", 1.0f);
  shader->SetByte("absent", 1);
  shader->SetVec2("absent", floats);
  shader->SetVec3("absent", floats);
  shader->SetVec4("absent", floats);
  shader->SetMat2("absent", floats);
  shader->SetMat3("absent", floats);
  shader->SetMat4("absent", floats);
  EXPECT_EQ(calls.count(), 0);
}

TEST_F(ShaderTest, CreatingAProgramEmptiesBothSources) {
  Graphics_Base graphics;
  std::string vertex = GL::kDefaultVertexSource;
  std::string fragment = kEmptyFragment;
  EXPECT_NE(graphics.CreateProgram(vertex, fragment), nullptr);
  EXPECT_EQ(vertex, "");
  EXPECT_EQ(fragment, "");
}

}  // namespace
}  // namespace krv::test
