#include "boundary/effect_factory.h"

#include <gtest/gtest.h>

#include "boundary/package_text.h"
#include "effects/krv_audio_visual.h"
#include "effects/krv_audio_visual_3d_geometry.h"
#include "effects/krv_audio_visual_mask_shape.h"
#include "support/scratch_folder.h"

namespace krv::test {
namespace {

class EffectFactory : public ::testing::Test {
 protected:
  ~EffectFactory() override {
    if (effect_ != nullptr) effect_->Destroy(1);
  }

  KRVEffect* Create(const std::string& unique_name) {
    const auto file = folder_.Write("description.json", PackageText(unique_name));
    description_ = std::make_shared<EffectDescription>();
    description_->LoadDescription(file.string());
    return effect_ = CreateEffectFromDescription(description_);
  }

  template <class Effect>
  bool Is() const {
    return dynamic_cast<Effect*>(effect_) != nullptr;
  }

  ScratchFolder folder_;
  std::shared_ptr<EffectDescription> description_;
  KRVEffect* effect_ = nullptr;
};

TEST_F(EffectFactory, MaskShapeInsideTheNameGivesTheMaskShape) {
  Create("my.audio_visualization_mask_shape.2");
  EXPECT_TRUE(Is<KRVAudioVisualMaskShape>());
}

TEST_F(EffectFactory, GeometryInsideTheNameGivesTheGeometry) {
  Create("my.audio_visualization_3d_geometry.2");
  EXPECT_TRUE(Is<KRVAudioVisual3dGeometry>());
}

TEST_F(EffectFactory, MaskShapeGoesBeforeGeometry) {
  Create("audio_visualization_3d_geometry audio_visualization_mask_shape");
  EXPECT_TRUE(Is<KRVAudioVisualMaskShape>());
}

TEST_F(EffectFactory, AnyOtherNameGivesThePlainEffect) {
  Create("audio_visualization_mask_shap");
  EXPECT_TRUE(Is<KRVAudioVisual>());
  EXPECT_FALSE(Is<KRVAudioVisualMaskShape>());
  EXPECT_FALSE(Is<KRVAudioVisual3dGeometry>());
}

TEST_F(EffectFactory, NoDescriptionGivesNoEffect) {
  EXPECT_EQ(CreateEffectFromDescription(nullptr), nullptr);
}

TEST_F(EffectFactory, InstancesShareTheirDescriptionAsLongAsTheyLive) {
  Create("plain");
  EXPECT_GT(description_.use_count(), 1);
  effect_->Destroy(1);
  effect_ = nullptr;
  EXPECT_EQ(description_.use_count(), 1);
}

}  // namespace
}  // namespace krv::test
