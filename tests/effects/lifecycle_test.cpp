// Creation, release and destruction of instances.
#include <glad/gl.h>
#include <gtest/gtest.h>

#include "effects/effect_fixture.h"

namespace krv::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kHalf[] = "gl_FragColor = vec4(0.5, 0.5, 0.5, 0.0);";

class Lifecycle : public EffectTest {};

TEST_F(Lifecycle, DestructionIsLogged) {
  Instance effect = host_.Create(host_.Register(PassPackage({Fragment(kHalf)})));
  EXPECT_THAT(host_.TakeLog(), IsEmpty());
  effect.reset();
  const auto log = host_.TakeLog();
  ASSERT_EQ(log.size(), 1u);
  EXPECT_EQ(log[0].level, kLogInformation);
  EXPECT_EQ(log[0].text, "<audio_visual> Audio Effect Destory");
}

TEST_F(Lifecycle, ReservedSlotsDoNothing) {
  const Instance effect = host_.Make(PassPackage({Fragment(kHalf)}));
  EXPECT_EQ(effect->Reserved2(&context_), kOk);
  EXPECT_EQ(effect->Reserved6(&context_), kOk);
  EXPECT_EQ(effect->Reserved8(nullptr), kOk);
  EXPECT_EQ(effect->Reserved9(nullptr), kOk);
  EXPECT_THAT(context_.asked, IsEmpty());
  EXPECT_THAT(host_.TakeLog(), IsEmpty());
}

TEST_F(Lifecycle, EffectWithAPersonInputAsksForItOnInitialise) {
  for (const char* input : {"human_segment", "mask"}) {
    Package package = PassPackage({Fragment(kHalf)});
    package.description["input_list"] = {input};
    const Instance effect = host_.Create(host_.Register(package));
    TestContext context;
    EXPECT_EQ(effect->Initialize(&context), kOk);
    EXPECT_THAT(context.extra_inputs, ElementsAre(1u)) << input;
  }
}

TEST_F(Lifecycle, EffectWithoutAPersonInputAsksForNone) {
  Package package = PassPackage({Fragment(kHalf)});
  package.description["input_list"] = {"another"};
  const Instance effect = host_.Create(host_.Register(package));
  EXPECT_EQ(effect->Initialize(&context_), kOk);
  EXPECT_THAT(context_.extra_inputs, IsEmpty());
}

TEST_F(Lifecycle, FailedInitialiseAsksForNoPersonInput) {
  Package package = PassPackage({""});
  package.description["input_list"] = {"mask"};
  const Instance effect = host_.Create(host_.Register(package));
  EXPECT_EQ(effect->Initialize(&context_), kFailed);
  EXPECT_THAT(context_.extra_inputs, IsEmpty());
}

TEST_F(Lifecycle, FrameBeforeInitialiseFailsAndWritesNothing) {
  const Instance effect = host_.Create(host_.Register(PassPackage({Fragment(kHalf)})));
  FillBytes(output_, 0xA5);
  const auto before = BytesOf(output_);
  EXPECT_EQ(ProcessFrame(*effect, context_), kFailed);
  EXPECT_EQ(BytesOf(output_), before);
}

TEST_F(Lifecycle, FrameAfterReleaseFailsAndWritesNothing) {
  const Instance effect = host_.Make(PassPackage({Fragment(kHalf)}));
  EXPECT_EQ(ProcessFrame(*effect, context_), kOk);
  EXPECT_EQ(effect->ReleaseResources(), kOk);
  FillBytes(output_, 0xA5);
  const auto before = BytesOf(output_);
  EXPECT_EQ(ProcessFrame(*effect, context_), kFailed);
  EXPECT_EQ(BytesOf(output_), before);
}

TEST_F(Lifecycle, ReleaseTwiceAndBeforeInitialiseDoesNothing) {
  const Instance effect = host_.Create(host_.Register(PassPackage({Fragment(kHalf)})));
  EXPECT_EQ(effect->ReleaseResources(), kOk);
  EXPECT_EQ(effect->Initialize(&context_), kOk);
  EXPECT_EQ(effect->ReleaseResources(), kOk);
  EXPECT_EQ(effect->ReleaseResources(), kOk);
}

TEST_F(Lifecycle, ReleaseGivesTheEffectTextureBackToTheHost) {
  const Instance effect = host_.Make(PassPackage({Fragment(kHalf)}));
  EXPECT_EQ(ProcessFrame(*effect, context_), kOk);
  EXPECT_EQ(host_.services().LiveFrameCount(), 1u);
  effect->ReleaseResources();
  EXPECT_EQ(host_.services().LiveFrameCount(), 0u);
}

TEST_F(Lifecycle, PackageWithoutShadersShowsTheInputUntouched) {
  FillValues(input_, {0.25, 0.5, 0.75, 0.5});
  const Instance effect = host_.Make(Package());
  EXPECT_EQ(Shown(*effect), (Values{0.25, 0.5, 0.75, 0.5}));
}

TEST_F(Lifecycle, InstanceIsDestroyedWithoutACurrentContext) {
  Instance effect = host_.Make(PassPackage({Fragment(kHalf)}));
  EXPECT_EQ(ProcessFrame(*effect, context_), kOk);
  host_.gl().ClearCurrent();
  effect.reset();
  ASSERT_TRUE(host_.gl().MakeCurrent());
  const Instance next = host_.Make(PassPackage({Fragment(kHalf)}));
  EXPECT_EQ(ProcessFrame(*next, context_), kOk);
}

TEST_F(Lifecycle, InstanceOutlivesItsContext) {
  FillValues(input_, {0.25, 0.25, 0.25, 1});
  Instance old = host_.Make(PassPackage({Fragment(kHalf)}));
  EXPECT_EQ(ProcessFrame(*old, context_), kOk);
  host_.ReplaceContext();
  const Instance young = host_.Make(PassPackage({Fragment(kHalf)}));
  EXPECT_EQ(Shown(*young), (Values{0.25, 0.25, 0.25, 1}));
  old.reset();
  EXPECT_EQ(Shown(*young), (Values{0.25, 0.25, 0.25, 1})) << "the old instance deleted its objects";
}

TEST_F(Lifecycle, FrameWithoutACurrentContextFailsAndWritesNothing) {
  FillValues(input_, {0.25, 0.25, 0.25, 1});
  const Instance effect = host_.Make(PassPackage({Fragment(kHalf)}));
  EXPECT_EQ(ProcessFrame(*effect, context_), kOk);
  FillBytes(output_, 0xA5);
  const auto before = BytesOf(output_);
  host_.gl().ClearCurrent();
  EXPECT_EQ(ProcessFrame(*effect, context_), kFailed);
  EXPECT_EQ(BytesOf(output_), before);
  ASSERT_TRUE(host_.gl().MakeCurrent());
  EXPECT_EQ(Shown(*effect), (Values{0.25, 0.25, 0.25, 1}));
}

TEST_F(Lifecycle, InstanceRecoversFromAFrameInAnotherContext) {
  FillValues(input_, {0.25, 0.25, 0.25, 1});
  const Instance effect = host_.Make(PassPackage({Fragment(kHalf)}));
  EXPECT_EQ(ProcessFrame(*effect, context_), kOk);
  host_.ReplaceContext();
  // Against the rules: whatever it gives, and GL says of it, the process lives on.
  glDisable(GL_DEBUG_OUTPUT);
  ProcessFrame(*effect, context_);
  glEnable(GL_DEBUG_OUTPUT);
  EXPECT_EQ(effect->ReleaseResources(), kOk);
  EXPECT_EQ(effect->Initialize(&context_), kOk);
  EXPECT_EQ(Shown(*effect), (Values{0.25, 0.25, 0.25, 1}));
}

TEST_F(Lifecycle, ReleaseAndInitialiseCarryAnInstanceIntoAnotherContext) {
  FillValues(input_, {0.25, 0.25, 0.25, 1});
  const Instance effect = host_.Make(PassPackage({Fragment(kHalf)}));
  EXPECT_EQ(ProcessFrame(*effect, context_), kOk);
  host_.ReplaceContext();
  EXPECT_EQ(effect->ReleaseResources(), kOk);
  EXPECT_EQ(effect->Initialize(&context_), kOk);
  EXPECT_EQ(Shown(*effect), (Values{0.25, 0.25, 0.25, 1}));
}

}  // namespace
}  // namespace krv::test
