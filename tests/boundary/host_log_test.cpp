#include "boundary/host_log.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "boundary/guard.h"
#include "support/raw_host.h"

namespace krv::test {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

// The part of the plug-in that logs, with a host's log in its registry.
class HostLog : public ::testing::Test {
 protected:
  HostLog() {
    void* provider = static_cast<void**>(host_.context())[1];
    void* suite = nullptr;
    CallSlot<int32_t, const char*, uint32_t, void**>(provider, 0, kHostUtilSuiteName, 1, &suite);
    PluginRegistry::Instance().host_util_suite = static_cast<HostUtilSuite*>(suite);
  }
  ~HostLog() override { PluginRegistry::Instance().host_util_suite = nullptr; }

  RawHost host_;
};

TEST_F(HostLog, FormatIsTaggedAndArgumentsAreTheHostsToFill) {
  LogToHost(kLogInformation, "%s has %d of %.2f\n", "name", 3, 4.5);
  ASSERT_THAT(host_.log, SizeIs(1));
  EXPECT_EQ(host_.log[0].level, 1);
  EXPECT_EQ(host_.log[0].format, "<audio_visual> %s has %d of %.2f\n");
  EXPECT_EQ(host_.log[0].text, "<audio_visual> name has 3 of 4.50\n");
}

TEST_F(HostLog, FormatIsCutToItsBuffer) {
  LogToHost(kLogError, std::string(5000, 'x').c_str());
  ASSERT_THAT(host_.log, SizeIs(1));
  EXPECT_EQ(host_.log[0].format.size(), 4095u);
}

TEST_F(HostLog, ArgumentsAreNotCut) {
  LogToHost(kLogError, "%s", std::string(5000, 'x').c_str());
  ASSERT_THAT(host_.log, SizeIs(1));
  EXPECT_EQ(host_.log[0].text, "<audio_visual> " + std::string(5000, 'x'));
}

TEST_F(HostLog, NothingIsLoggedWithoutTheSuite) {
  PluginRegistry::Instance().host_util_suite = nullptr;
  LogToHost(kLogError, "lost");
  EXPECT_THAT(host_.log, IsEmpty());
}

TEST_F(HostLog, GuardPassesResultsThroughSilently) {
  EXPECT_EQ(GuardHostCall([] { return 2; }), 2);
  EXPECT_THAT(host_.log, IsEmpty());
}

TEST_F(HostLog, GuardTurnsAnExceptionIntoCodeFourAndItsTextIntoOneLine) {
  EXPECT_EQ(GuardHostCall([]() -> int32_t { throw std::runtime_error("100 %s wrong"); }), 4);
  ASSERT_THAT(host_.log, SizeIs(1));
  EXPECT_EQ(host_.log[0].level, 4);
  EXPECT_EQ(host_.log[0].text, "<audio_visual> 100 %s wrong");
}

TEST_F(HostLog, GuardStopsWhatIsNoException) {
  EXPECT_EQ(GuardHostCall([]() -> int32_t { throw 5; }), 4);
  EXPECT_THAT(host_.log, SizeIs(1));
}

}  // namespace
}  // namespace krv::test
