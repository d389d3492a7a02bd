// The two functions of the AI filter plug-in, and what they refuse.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "ai_filter/built_filter.h"
#include "ai_filter/drawn_person.h"

namespace krv::test {
namespace {

TEST(AiFilterCreate, ItsGuidMakesAFilterAndNoOtherDoes) {
  auto* create = BuiltFilter::Get().create;
  EXPECT_NE(create(kAiFilterGuid, ""), nullptr);
  EXPECT_EQ(create("2193B116-1AD4-49F4-84A1-FFA3CB983A95", ""), nullptr);
  EXPECT_EQ(create("2193b116-1ad4-49f4-84a1-ffa3cb983a94", ""), nullptr);
  EXPECT_EQ(create("", ""), nullptr);
  EXPECT_EQ(create(nullptr, ""), nullptr);
}

TEST(AiFilterCreate, AFolderOfModelsIsNotNeeded) {
  EXPECT_NE(BuiltFilter::Get().create(kAiFilterGuid, nullptr), nullptr);
  EXPECT_NE(BuiltFilter::Get().create(kAiFilterGuid, "/there/is/none"), nullptr);
}

TEST(AiFilterCreate, EveryCallMakesAFilterOfItsOwn) { EXPECT_NE(MakeFilter(), MakeFilter()); }

// The arguments of one call, right until one is spoilt.
struct Call {
  void* filter = MakeFilter();
  cv::Mat out = cv::Mat(kPictureSize, CV_8UC4, cv::Scalar::all(77));
  cv::Mat in = EmptyRoom();
  uint8_t* out_pixels = out.data;
  const uint8_t* in_pixels = in.data;
  const uint8_t* in2_pixels = in.data;
  int32_t out_size[3] = {out.cols, out.rows, out.cols * 4};  // width, height, stride
  int32_t in_size[3] = {in.cols, in.rows, in.cols * 4};
  int32_t in2_size[3] = {in.cols, in.rows, in.cols * 4};

  int32_t Make() const {
    return BuiltFilter::Get().transform(filter, out_pixels, out_size[0], out_size[1], out_size[2],
                                        in_pixels, in_size[0], in_size[1], in_size[2], in2_pixels,
                                        in2_size[0], in2_size[1], in2_size[2]);
  }
};

TEST(AiFilterTransform, RightArgumentsSucceed) {
  const Call call;
  EXPECT_EQ(call.Make(), 0);
  EXPECT_EQ(cv::countNonZero(call.out.reshape(1)), 0);  // a room without anybody
}

TEST(AiFilterTransform, NullPointersFailAndWriteNothing) {
  const std::vector<std::function<void(Call&)>> spoils = {
      [](Call& call) { call.filter = nullptr; }, [](Call& call) { call.out_pixels = nullptr; },
      [](Call& call) { call.in_pixels = nullptr; }, [](Call& call) { call.in2_pixels = nullptr; }};
  for (size_t i = 0; i < spoils.size(); ++i) {
    Call call;
    spoils[i](call);
    EXPECT_NE(call.Make(), 0) << i;
    EXPECT_EQ(cv::countNonZero(call.out.reshape(1) != 77), 0) << i;
  }
}

TEST(AiFilterTransform, SizesBelowOneAndNarrowStridesFailAndWriteNothing) {
  for (int32_t(Call::*size)[3] : {&Call::out_size, &Call::in_size, &Call::in2_size}) {
    for (int i = 0; i < 3; ++i) {
      const int32_t least = i == 2 ? kPictureSize.width * 4 - 1 : 0;
      for (const int32_t value : {least, -1, INT32_MIN}) {
        Call call;
        (call.*size)[i] = value;
        EXPECT_NE(call.Make(), 0) << i << " " << value;
        EXPECT_EQ(cv::countNonZero(call.out.reshape(1) != 77), 0) << i << " " << value;
      }
    }
  }
}

TEST(AiFilterTransform, AWidthWhoseBytesOverflowFails) {
  Call call;
  call.in_size[0] = call.in2_size[0] = INT32_MAX / 2;
  EXPECT_NE(call.Make(), 0);
}

TEST(AiFilterTransform, AFailedCallLeavesTheFilterUsable) {
  Call call;
  DrawPerson(call.in, {140, 150}, 120);
  call.in2_pixels = nullptr;
  EXPECT_NE(call.Make(), 0);
  call.in2_pixels = call.in.data;
  EXPECT_EQ(call.Make(), 0);
  EXPECT_GT(cv::countNonZero(call.out.reshape(1) == 255), 0);
}

TEST(AiFilterTransform, BytesBehindTheRowsStayAsTheyAre) {
  cv::Mat storage(kPictureSize.height, kPictureSize.width * 4 + 5, CV_8UC1, cv::Scalar(77));
  Call call;
  call.out_pixels = storage.data;
  call.out_size[2] = storage.cols;
  EXPECT_EQ(call.Make(), 0);
  EXPECT_EQ(cv::countNonZero(storage.colRange(0, kPictureSize.width * 4)), 0);
  EXPECT_EQ(cv::countNonZero(storage.colRange(kPictureSize.width * 4, storage.cols) != 77), 0);
}

TEST(AiFilterTransform, ThePictureIsLeftAlone) {
  Call call;
  DrawPerson(call.in, {140, 150}, 120);
  const cv::Mat before = call.in.clone();
  EXPECT_EQ(call.Make(), 0);
  EXPECT_EQ(cv::norm(call.in, before, cv::NORM_INF), 0);
}

TEST(AiFilterTransform, PicturesOfAnyShapeHaveAMask) {
  void* filter = MakeFilter();
  for (const cv::Size& size : {cv::Size(1, 1), cv::Size(3, 200), cv::Size(200, 3),
                               cv::Size(17, 4000), cv::Size(4000, 17), cv::Size(1920, 1080)}) {
    EXPECT_EQ(MaskOf(filter, cv::Mat(size, CV_8UC4, cv::Scalar::all(128))).size(), size) << size;
  }
}

}  // namespace
}  // namespace krv::test
