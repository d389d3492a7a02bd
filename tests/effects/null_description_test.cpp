// An instance without a description: the factory makes none, so this is tested on the class itself.
#include <gtest/gtest.h>

#include "effects/krv_audio_visual.h"
#include "effects/logging_host.h"

namespace krv {
namespace {

TEST(NullDescription, IsLoggedAndTheInstanceExistsAllTheSame) {
  test::LoggingHost host;
  KRVEffect* const effect = new KRVAudioVisual(nullptr);
  const auto log = host.TakeLog();
  ASSERT_EQ(log.size(), 1u);
  EXPECT_EQ(log[0].level, kLogError);
  EXPECT_EQ(log[0].text, "<audio_visual> Audio Effect Create Error");
  EXPECT_EQ(effect->Initialize(nullptr), kFailed);
  EXPECT_EQ(effect->Destroy(1), effect);
}

TEST(NullDescription, DestroyWithoutTheFreeingBitLeavesTheMemory) {
  test::LoggingHost host;
  alignas(KRVAudioVisual) unsigned char memory[sizeof(KRVAudioVisual)];
  KRVEffect* const effect = new (memory) KRVAudioVisual(nullptr);
  host.TakeLog();
  EXPECT_EQ(effect->Destroy(0), static_cast<void*>(memory));
  const auto log = host.TakeLog();
  ASSERT_EQ(log.size(), 1u);
  EXPECT_EQ(log[0].text, "<audio_visual> Audio Effect Destory");
}

}  // namespace
}  // namespace krv
