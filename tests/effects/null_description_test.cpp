// An instance without a description: the factory makes none, so this is tested on the class itself.
#include <gtest/gtest.h>

#include "boundary/plugin_registry.h"
#include "effects/krv_audio_visual.h"
#include "suites.h"

namespace krv {
namespace {

class NullDescription : public testing::Test {
 protected:
  void SetUp() override {
    void* suite = nullptr;
    services_.context()->suites->AcquireSuite(kHostUtilSuiteName, kSuiteVersion, &suite);
    PluginRegistry::Instance().host_util_suite = static_cast<HostUtilSuite*>(suite);
  }
  void TearDown() override { PluginRegistry::Instance().host_util_suite = nullptr; }

  host::HostServices services_{host::DeviceUse::kMemory, {}};
};

TEST_F(NullDescription, IsLoggedAndTheInstanceExistsAllTheSame) {
  KRVEffect* const effect = new KRVAudioVisual(nullptr);
  const auto log = services_.TakeLog();
  ASSERT_EQ(log.size(), 1u);
  EXPECT_EQ(log[0].level, kLogError);
  EXPECT_EQ(log[0].text, "<audio_visual> Audio Effect Create Error");
  EXPECT_EQ(effect->Initialize(nullptr), kFailed);
  EXPECT_EQ(effect->Destroy(1), effect);
}

TEST_F(NullDescription, DestroyWithoutTheFreeingBitLeavesTheMemory) {
  alignas(KRVAudioVisual) unsigned char memory[sizeof(KRVAudioVisual)];
  KRVEffect* const effect = new (memory) KRVAudioVisual(nullptr);
  services_.TakeLog();
  EXPECT_EQ(effect->Destroy(0), static_cast<void*>(memory));
  const auto log = services_.TakeLog();
  ASSERT_EQ(log.size(), 1u);
  EXPECT_EQ(log[0].text, "<audio_visual> Audio Effect Destory");
}

}  // namespace
}  // namespace krv
