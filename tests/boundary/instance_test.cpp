#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "boundary/boundary_fixture.h"

namespace krv::test {
namespace {

class Instance : public BoundaryTest {
 protected:
  ~Instance() override {
    for (void* effect : effects_) library_.release(effect);
  }

  // A new instance of a package of that name; released at the end.
  void* Create(const std::string& unique_name) {
    WritePackage(unique_name, PackageText(unique_name));
    Register();
    void* effect = nullptr;
    EXPECT_EQ(library_.create(unique_name.c_str(), 0, &effect), 0);
    effects_.push_back(effect);
    return effect;
  }

  // What CreateKRVEffect answers; checks that a refusal leaves the output alone.
  int32_t CodeFor(const std::string& unique_name, int32_t device_kind) {
    int untouched = 0;
    void* effect = &untouched;
    const int32_t code = library_.create(unique_name.c_str(), device_kind, &effect);
    if (code == 0) {
      library_.release(effect);
    } else {
      EXPECT_EQ(effect, &untouched) << unique_name << " with kind " << device_kind;
    }
    return code;
  }

  std::vector<void*> effects_;
};

TEST_F(Instance, WithoutAGpuDeviceOnlyKindZeroIsGranted) {
  Announce(Unique("effect"), "");
  EXPECT_EQ(CodeFor(Unique("effect"), 0), 0);
  for (const int32_t kind : {2, 1, 3, -1, 0x100}) {
    EXPECT_EQ(CodeFor(Unique("effect"), kind), 2) << kind;
  }
}

TEST_F(Instance, WithAGpuDeviceOnlyKindTwoIsGranted) {
  StartUpWithDevices({2});
  Announce(Unique("effect"), "");
  EXPECT_EQ(CodeFor(Unique("effect"), 2), 0);
  for (const int32_t kind : {0, 1, 3, -1, 0x102}) {
    EXPECT_EQ(CodeFor(Unique("effect"), kind), 2) << kind;
  }
}

TEST_F(Instance, UnknownNameIsRefusedAndLeavesTheOutputAlone) {
  EXPECT_EQ(CodeFor(Unique("nobody"), 0), 2);
  EXPECT_EQ(CodeFor("", 0), 2);
}

TEST_F(Instance, NullArgumentsAreRefused) {
  Announce(Unique("effect"), "");
  void* effect = this;
  EXPECT_EQ(library_.create(nullptr, 0, &effect), 2);
  EXPECT_EQ(effect, this);
  EXPECT_EQ(library_.create(Unique("effect").c_str(), 0, nullptr), 2);
}

TEST_F(Instance, ReleaseOfNullDoesNothing) {
  library_.release(nullptr);
  EXPECT_TRUE(host_.log.empty());
}

TEST_F(Instance, NamesThatContainAFiguresNameChooseItsClass) {
  const auto* plain = TableOf(Create(Unique("plain")));
  const auto* mask = TableOf(Create("audio_visualization_mask_shape"));
  const auto* geometry = TableOf(Create("audio_visualization_3d_geometry"));
  EXPECT_NE(plain, mask);
  EXPECT_NE(plain, geometry);
  EXPECT_NE(mask, geometry);
  EXPECT_EQ(TableOf(Create("my.audio_visualization_mask_shape.2")), mask);
  EXPECT_EQ(TableOf(Create("my.audio_visualization_3d_geometry.2")), geometry);
  EXPECT_EQ(TableOf(Create("audio_visualization_3d_geometry+audio_visualization_mask_shape")),
            mask);
  EXPECT_EQ(TableOf(Create("Audio_Visualization_Mask_Shape")), plain);
}

TEST_F(Instance, ReservedSlotsDoNothing) {
  void* effect = Create(Unique("effect"));
  for (const size_t slot : {2, 6, 8, 9}) {
    EXPECT_EQ((CallSlot<int32_t, void*>(effect, slot, nullptr)), 0) << "slot " << slot;
  }
}

TEST_F(Instance, InputsCanBeClearedAndResourcesReleasedBeforeAnyFrame) {
  void* effect = Create(Unique("effect"));
  EXPECT_EQ(CallSlot<int32_t>(effect, 3), 0);
  EXPECT_EQ(CallSlot<int32_t>(effect, 7), 0);
}

TEST_F(Instance, FrameWithoutAContextIsNothingToDo) {
  void* effect = Create(Unique("effect"));
  EXPECT_EQ((CallSlot<int32_t, void*>(effect, 4, nullptr)), 2);
  EXPECT_EQ((CallSlot<int32_t, void*>(effect, 5, nullptr)), 2);
}

TEST_F(Instance, DestroySlotFreesAndReturnsTheAddress) {
  void* effect = Create(Unique("effect"));
  effects_.clear();
  EXPECT_EQ((CallSlot<void*, uint32_t>(effect, 0, 1)), effect);
}

TEST_F(Instance, TwoInstancesOfOneEffectAreApart) {
  void* first = Create(Unique("effect"));
  void* second = Create(Unique("effect"));
  EXPECT_NE(first, second);
  EXPECT_EQ(TableOf(first), TableOf(second));
}

}  // namespace
}  // namespace krv::test
