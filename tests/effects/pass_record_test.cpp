#include "effects/pass_record.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <thread>

#include "effects/parameter_conversion.h"
#include "graphics/px_graphics_context.h"

namespace krv {
namespace {

using testing::ElementsAre;

template <class T>
T DataOf(const UniformValue& uniform) {
  T value{};
  EXPECT_EQ(uniform.size, sizeof(value));
  std::memcpy(&value, uniform.data.data(), sizeof(value));
  return value;
}

class PassRecordTest : public testing::Test {
 protected:
  const std::vector<UniformValue>& Added() {
    draw_ = CreateGraphicsContext();
    AddUniforms(*draw_, record_);
    return draw_->uniforms;
  }

  std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (const UniformValue& uniform : Added()) names.push_back(uniform.name);
    return names;
  }

  PassRecord record_;
  std::unique_ptr<PXGraphicsContext> draw_;
};

TEST_F(PassRecordTest, UniformsAreAddedInNameOrder) {
  StoreUniform(record_, "b", IntValue(1));
  StoreUniform(record_, "a", IntValue(2));
  StoreUniform(record_, "B", IntValue(3));
  EXPECT_THAT(Names(), ElementsAre("B", "a", "b"));
}

TEST_F(PassRecordTest, LaterValueOverwritesTheEarlierOne) {
  StoreUniform(record_, "a", IntValue(1));
  StoreUniform(record_, "a", FloatValue(0.5F));
  ASSERT_EQ(Added().size(), 1u);
  EXPECT_EQ(draw_->uniforms[0].type, UniformType::kFloat);
  EXPECT_EQ(DataOf<float>(draw_->uniforms[0]), 0.5F);
}

TEST_F(PassRecordTest, KindsBecomeUniformTypes) {
  StoreUniform(record_, "a", IntValue(7));
  ParameterValue value = IntValue(8);
  value.kind = kKindIntInternal;
  StoreUniform(record_, "b", value);
  StoreUniform(record_, "c", FloatValue(0.5F));
  value = {};
  value.kind = kKindDouble;
  value.as_double = 0.25;
  StoreUniform(record_, "d", value);
  value = IntValue(0x701);
  value.kind = kKindBool;
  StoreUniform(record_, "e", value);

  const auto& uniforms = Added();
  ASSERT_EQ(uniforms.size(), 5u);
  EXPECT_EQ(uniforms[0].type, UniformType::kInt);
  EXPECT_EQ(DataOf<int32_t>(uniforms[0]), 7);
  EXPECT_EQ(uniforms[1].type, UniformType::kInt);
  EXPECT_EQ(DataOf<int32_t>(uniforms[1]), 8);
  EXPECT_EQ(uniforms[2].type, UniformType::kFloat);
  EXPECT_EQ(DataOf<float>(uniforms[2]), 0.5F);
  EXPECT_EQ(uniforms[3].type, UniformType::kDouble);
  EXPECT_EQ(DataOf<double>(uniforms[3]), 0.25);
  EXPECT_EQ(uniforms[4].type, UniformType::kInt);
  EXPECT_EQ(DataOf<int32_t>(uniforms[4]), 1) << "the low 8 bits alone";
}

TEST_F(PassRecordTest, OtherKindsAreNotPassed) {
  for (const int kind : {0, 1, 2, 8, 9, 14, 15, 16, -1}) {
    ParameterValue value{};
    value.kind = kind;
    StoreUniform(record_, "a", value);
    EXPECT_TRUE(Added().empty()) << "kind " << kind;
  }
}

TEST_F(PassRecordTest, ValuesMayBeSetWhileTheyAreRead) {
  std::thread writer([&] {
    for (int32_t i = 0; i < 2000; ++i)
      StoreUniform(record_, "u" + std::to_string(i % 7), IntValue(i));
  });
  for (int i = 0; i < 2000; ++i) EXPECT_LE(Added().size(), 7u);
  writer.join();
  EXPECT_EQ(Added().size(), 7u);
}

}  // namespace
}  // namespace krv
