// Uniforms of a draw, as the program receives them.
#include <gmock/gmock.h>

#include <cstring>
#include <numeric>

#include "graphics/gl_calls.h"
#include "graphics/graphics_test.h"
#include "graphics/opengl/impl/shader.h"

namespace krv::test {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;

class UniformTest : public GraphicsTest {
 protected:
  // What the uniform `u` of this GLSL type holds in the program after a draw with the entry; the
  // GLSL expression makes the uniform active.
  std::vector<GLfloat> Received(const std::string& glsl_type, const std::string& expression,
                                UniformType type, const void* data, uint32_t size) {
    const auto draw =
        MakeDraw("uniform " + glsl_type + " u;", "gl_FragColor = vec4(" + expression + ");");
    draw->AddUniform("u", type, data, size);
    DrawOnePixel(*draw);
    const GL::Shader* shader = draw->program->shader();
    std::vector<GLfloat> values(16, 0.0f);
    glGetUniformfv(shader->name(), shader->UniformLocation("u"), values.data());
    values.resize(size < 4 ? 1 : size / sizeof(float));
    return values;
  }

  // How many uniforms a draw with this entry sets.
  int SettingsOf(const std::string& name, UniformType type, const void* data, uint32_t size) {
    const auto draw = MakeDraw("uniform float u;", "gl_FragColor = vec4(u);");
    draw->AddUniform(name, type, data, size);
    const auto target = MakeTarget(1, 1);
    const UniformSettings settings;
    EXPECT_EQ(DrawInto(*target, *draw), 0);
    return settings.count();
  }
};

class IntegerCodeTest : public UniformTest, public testing::WithParamInterface<uint32_t> {
 protected:
  UniformType Code() const { return static_cast<UniformType>(GetParam()); }
};

TEST_P(IntegerCodeTest, FourBytesAreOneInteger) {
  const int32_t value = -70000;
  EXPECT_THAT(Received("int", "float(u)", Code(), &value, 4), ElementsAre(-70000.0f));
}

TEST_P(IntegerCodeTest, FewerBytesAreFilledUpWithZeros) {
  const uint8_t value[4] = {0x12, 0xFF, 0xFF, 0xFF};
  EXPECT_THAT(Received("int", "float(u)", Code(), value, 1), ElementsAre(18.0f));
  EXPECT_THAT(Received("int", "float(u)", Code(), value, 2), ElementsAre(0xFF12));
}

TEST_P(IntegerCodeTest, MoreBytesThanFourAreLeftOut) {
  const int32_t values[2] = {41, 99};
  EXPECT_EQ(Received("int", "float(u)", Code(), values, 8)[0], 41.0f);
}

INSTANTIATE_TEST_SUITE_P(Codes, IntegerCodeTest, testing::Range(0U, 6U));

TEST_F(UniformTest, AFloatIsSetAsFloat) {
  const float value = -1.25f;
  EXPECT_THAT(Received("float", "u", UniformType::kFloat, &value, 4), ElementsAre(-1.25f));
}

TEST_F(UniformTest, AByteIsSetAsItsUnsignedValue) {
  const uint8_t value = 200;
  EXPECT_THAT(Received("int", "float(u)", UniformType::kByte, &value, 1), ElementsAre(200.0f));
}

TEST_F(UniformTest, AByteSetsABool) {
  const uint8_t value = 1;
  EXPECT_THAT(Received("bool", "u ? 1.0 : 0.0", UniformType::kByte, &value, 1), ElementsAre(1.0f));
}

TEST_F(UniformTest, VectorsAreSetWithAllTheirComponents) {
  const std::vector<float> v = {1.5f, -2.0f, 3.25f, 4.0f};
  EXPECT_THAT(Received("vec2", "u, u", UniformType::kVec2, v.data(), 8), ElementsAre(1.5f, -2.0f));
  EXPECT_THAT(Received("vec3", "u, 1.0", UniformType::kVec3, v.data(), 12),
              ElementsAre(1.5f, -2.0f, 3.25f));
  EXPECT_THAT(Received("vec4", "u", UniformType::kVec4, v.data(), 16), ElementsAreArray(v));
}

TEST_F(UniformTest, MatricesAreSetColumnByColumnWithoutTransposing) {
  std::vector<float> m(16);
  std::iota(m.begin(), m.end(), 1.0f);
  EXPECT_THAT(Received("mat2", "u[0], u[1]", UniformType::kMat2, m.data(), 16),
              ElementsAre(1, 2, 3, 4));
  EXPECT_THAT(Received("mat3", "u[0] + u[1] + u[2], 1.0", UniformType::kMat3, m.data(), 36),
              ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9));
  EXPECT_THAT(Received("mat4", "u[0] + u[1] + u[2] + u[3]", UniformType::kMat4, m.data(), 64),
              ElementsAreArray(m));
}

TEST_F(UniformTest, TheFirstFourFloatsOfAMatrixAreItsFirstColumnInTheShader) {
  std::vector<float> m(16);
  std::iota(m.begin(), m.end(), 1.0f);
  const auto draw = MakeDraw("uniform mat4 u;", "gl_FragColor = u * vec4(1.0, 0.0, 0.0, 0.0);");
  draw->AddUniform("u", UniformType::kMat4, m.data(), 64);
  EXPECT_THAT(DrawOnePixel(*draw), ElementsAre(1.0f, 2.0f, 3.0f, 4.0f));
}

TEST_F(UniformTest, SeveralFloatsAreTheElementsOfAnArray) {
  const float values[3] = {1.0f, 2.0f, 3.0f};
  const auto draw = MakeDraw("uniform float u[4];", "gl_FragColor = vec4(u[0], u[1], u[2], u[3]);");
  draw->AddUniform("u", UniformType::kFloat, values, sizeof(values));
  EXPECT_THAT(DrawOnePixel(*draw), ElementsAre(1.0f, 2.0f, 3.0f, 0.0f));
}

TEST_F(UniformTest, SeveralVectorsAreTheElementsOfAnArray) {
  std::vector<float> values(8);
  std::iota(values.begin(), values.end(), 1.0f);
  const auto draw = MakeDraw("uniform vec4 u[2];", "gl_FragColor = u[0] + u[1];");
  draw->AddUniform("u", UniformType::kVec4, values.data(), 32);
  EXPECT_THAT(DrawOnePixel(*draw), ElementsAre(6.0f, 8.0f, 10.0f, 12.0f));
}

TEST_F(UniformTest, MoreValuesThanAnArrayHasAreLeftOut) {
  const float values[3] = {1.0f, 2.0f, 3.0f};
  const auto array = MakeDraw("uniform float u[2];", "gl_FragColor = vec4(u[0], u[1], 0.0, 0.0);");
  array->AddUniform("u", UniformType::kFloat, values, sizeof(values));
  EXPECT_THAT(DrawOnePixel(*array), ElementsAre(1.0f, 2.0f, 0.0f, 0.0f));
  const auto single = MakeDraw("uniform float u;", "gl_FragColor = vec4(u);");
  single->AddUniform("u", UniformType::kFloat, values, sizeof(values));
  EXPECT_THAT(DrawOnePixel(*single), Each(1.0f));
}

class IgnoredCodeTest : public UniformTest, public testing::WithParamInterface<uint32_t> {};

TEST_P(IgnoredCodeTest, IsNotSet) {
  const double data[8] = {1, 1, 1, 1, 1, 1, 1, 1};
  EXPECT_EQ(SettingsOf("u", static_cast<UniformType>(GetParam()), data, sizeof(data)), 0);
}

INSTANTIATE_TEST_SUITE_P(Codes, IgnoredCodeTest,
                         testing::Values(6U, 7U, 9U, 17U, 18U, 255U, 0xFFFFFFFFU));

TEST_F(UniformTest, AnEntryWithoutANameIsNotSet) {
  const float value = 1.0f;
  EXPECT_EQ(SettingsOf("u", UniformType::kFloat, &value, 4), 1);
  EXPECT_EQ(SettingsOf("", UniformType::kFloat, &value, 4), 0);
}

TEST_F(UniformTest, AnEntryWithoutDataIsNotSet) {
  EXPECT_EQ(SettingsOf("u", UniformType::kFloat, nullptr, 4), 0);
  EXPECT_EQ(SettingsOf("u", UniformType::kInt, nullptr, 4), 0);
}

TEST_F(UniformTest, AnEntryTooShortForItsTypeIsNotSet) {
  const float values[2] = {1.0f, 2.0f};
  EXPECT_EQ(SettingsOf("u", UniformType::kVec3, values, 8), 0);
  EXPECT_EQ(SettingsOf("u", UniformType::kFloat, values, 2), 0);
}

TEST_F(UniformTest, TheLaterValueOfANameWins) {
  const auto draw = MakeDraw("uniform float u;", "gl_FragColor = vec4(u);");
  const float first = 1.0f;
  const float second = 2.0f;
  draw->AddUniform("u", UniformType::kFloat, &first, 4);
  draw->AddUniform("u", UniformType::kFloat, &second, 4);
  const UniformSettings settings;
  EXPECT_THAT(DrawOnePixel(*draw), Each(2.0f));
  EXPECT_EQ(settings.count(), 2) << "entries are never merged";
}

TEST_F(UniformTest, AContextKeepsItsOwnCopyOfNameAndData) {
  const auto draw = MakeDraw("uniform float u;", "gl_FragColor = vec4(u);");
  std::string name = "u";
  float value = 3.0f;
  draw->AddUniform(name, UniformType::kFloat, &value, 4);
  name[0] = 'x';
  value = 4.0f;
  EXPECT_THAT(DrawOnePixel(*draw), Each(3.0f));
}

TEST(UniformValueTest, ItsDataHasEightSpareZeroBytes) {
  const auto draw = CreateGraphicsContext();
  const uint32_t data = 0x01020304;
  draw->AddUniform("u", UniformType::kInt, &data, 4);
  const UniformValue& uniform = draw->uniforms.front();
  EXPECT_EQ(uniform.size, 4U);
  ASSERT_EQ(uniform.data.size(), 12U);
  EXPECT_EQ(std::memcmp(uniform.data.data(), &data, 4), 0);
  EXPECT_THAT(std::vector(uniform.data.begin() + 4, uniform.data.end()), Each(std::byte{0}));
}

TEST_F(UniformTest, AResolutionUniformRelatesPixelsToTheTextureCoordinate) {
  const auto draw = MakeDraw("uniform vec2 iResolution;",
                             "gl_FragColor = vec4(gl_FragCoord.xy / iResolution - tc, tc);");
  const float resolution[2] = {8.0f, 4.0f};
  draw->AddUniform("iResolution", UniformType::kVec2, resolution, 8);
  const auto target = MakeTarget(8, 4, DataType::kFloat);
  ASSERT_EQ(DrawInto(*target, *draw), 0);
  for (const RgbaFloat& texel : ReadFloats(*target, 8, 4)) {
    EXPECT_NEAR(texel[0], 0.0f, 1e-6f);
    EXPECT_NEAR(texel[1], 0.0f, 1e-6f);
  }
}

}  // namespace
}  // namespace krv::test
