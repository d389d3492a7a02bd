#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "boundary/boundary_fixture.h"

namespace krv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr uint32_t kOtherApi = 1;
constexpr uint32_t kOpenGl = 2;

class Startup : public BoundaryTest {
 protected:
  template <class T>
  T Field(size_t offset) const {
    T value;
    std::memcpy(&value, info_ + offset, sizeof(value));
    return value;
  }

  // Which of the two kinds an effect can be created with, as a host without and with a GPU asks.
  bool CreatesWithKind(int32_t kind) {
    const std::string name = Unique("effect");
    WritePackage("package", PackageText(name));
    Register();
    void* effect = nullptr;
    const bool created = library_.create(name.c_str(), kind, &effect) == 0;
    library_.release(effect);
    return created;
  }

  unsigned char info_[64];
};

TEST_F(Startup, AsksForFourSuitesOfVersionOneInOrder) {
  EXPECT_THAT(host_.suite_requests,
              ElementsAre(SuiteRequest{"Memory Allocator Suite", 1},
                          SuiteRequest{"Image Buffer ALlocator Suite", 1},
                          SuiteRequest{"Host Util Suite", 1}, SuiteRequest{"GPU Device Suite", 1}));
}

TEST_F(Startup, FillsThePluginRecordAtItsOffsets) {
  std::memset(info_, 0xEE, sizeof(info_));
  EXPECT_EQ(library_.startup(host_.context(), info_), 0);
  EXPECT_EQ(Field<uint32_t>(0), 1u);
  EXPECT_EQ(Field<uint32_t>(4), 1u);
  EXPECT_STREQ(Field<const char*>(8), "audio_visual");
  EXPECT_STREQ(Field<const char*>(16), "org.krv.audiovisual");
  EXPECT_STREQ(Field<const char*>(24), "audio visualization effect");
  EXPECT_STREQ(Field<const char*>(32), "");
  EXPECT_EQ(Field<uint32_t>(40), 0u);
  EXPECT_EQ(Field<uint64_t>(48), 0xEEEEEEEEEEEEEEEEu) << "written past the record";
}

TEST_F(Startup, GivesTheSameTextsEveryTime) {
  library_.startup(host_.context(), info_);
  const auto* name = Field<const char*>(8);
  library_.startup(host_.context(), info_);
  EXPECT_EQ(Field<const char*>(8), name);
}

TEST_F(Startup, NoDevicesMeansNoGpuDevice) {
  StartUpWithDevices({});
  EXPECT_THAT(host_.device_requests, IsEmpty());
  EXPECT_TRUE(CreatesWithKind(0));
  EXPECT_FALSE(CreatesWithKind(2));
}

TEST_F(Startup, DevicesOfOtherApisMeanNoGpuDevice) {
  StartUpWithDevices({kOtherApi, 0, 3});
  EXPECT_THAT(host_.device_requests, ElementsAre(0u, 1u, 2u));
  EXPECT_TRUE(CreatesWithKind(0));
  EXPECT_FALSE(CreatesWithKind(2));
}

TEST_F(Startup, LowerOfTwoUsableDevicesWins) {
  StartUpWithDevices({kOtherApi, kOpenGl, kOpenGl});
  EXPECT_THAT(host_.device_requests, ElementsAre(0u, 1u));
  EXPECT_TRUE(CreatesWithKind(2));
  EXPECT_FALSE(CreatesWithKind(0));
}

TEST_F(Startup, AsksForTheDeviceCountBeforeEveryFurtherIndex) {
  host_.device_counts = 0;
  host_.vanishing_devices = 2;
  StartUpWithDevices({kOtherApi, kOtherApi, kOpenGl});
  EXPECT_THAT(host_.device_requests, ElementsAre(0u));
  EXPECT_FALSE(CreatesWithKind(2));
}

TEST_F(Startup, MissingGpuSuiteMeansNoGpuDevice) {
  host_.missing_suites = {"GPU Device Suite"};
  StartUpWithDevices({kOpenGl});
  EXPECT_TRUE(CreatesWithKind(0));
}

TEST_F(Startup, SecondCallForgetsADeviceThatIsGone) {
  StartUpWithDevices({kOpenGl});
  EXPECT_TRUE(CreatesWithKind(2));
  StartUpWithDevices({kOtherApi});
  EXPECT_FALSE(CreatesWithKind(2));
}

TEST_F(Startup, SecondCallForgetsSuitesThatAreGone) {
  StartUpWithDevices({kOpenGl});
  host_.missing_suites = {"Memory Allocator Suite", "Image Buffer ALlocator Suite",
                          "Host Util Suite", "GPU Device Suite"};
  StartUp();
  EXPECT_TRUE(CreatesWithKind(0));
  EXPECT_THAT(host_.log, IsEmpty()) << "logged through a suite that the host no longer gives";
}

TEST_F(Startup, HostWithoutASuiteProviderHasNoSuites) {
  StartUpWithDevices({kOpenGl});
  void* context[2] = {nullptr, nullptr};
  EXPECT_EQ(library_.startup(context, nullptr), 0);
  EXPECT_TRUE(CreatesWithKind(0));
  EXPECT_THAT(host_.log, IsEmpty());
}

TEST_F(Startup, NullArgumentsAreIgnored) {
  EXPECT_EQ(library_.startup(nullptr, nullptr), 0);
  EXPECT_EQ(library_.startup(nullptr, info_), 0);
  EXPECT_STREQ(Field<const char*>(8), "audio_visual");
  host_.suite_requests.clear();
  EXPECT_EQ(library_.startup(host_.context(), nullptr), 0);
  EXPECT_EQ(host_.suite_requests.size(), 4u);
}

TEST_F(Startup, ShutdownKeepsEffectsAndHost) {
  const std::string name = Unique("effect");
  WritePackage("package", PackageText(name));
  Register();
  EXPECT_EQ(library_.shutdown(), 0);
  EXPECT_TRUE(CanCreate(name));
  host_.log.clear();
  Register();
  EXPECT_EQ(host_.log.size(), 1u);
}

}  // namespace
}  // namespace krv::test
