// People found without a model.
#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>
#include <thread>
#include <vector>

#include "ai_filter/built_filter.h"
#include "ai_filter/drawn_person.h"

namespace krv::test {
namespace {

struct Place {
  cv::Point feet;
  int height;
};
constexpr int kHeight = 120;
const Place kMiddle = {{140, 150}, kHeight};

cv::Mat PictureOf(const std::vector<Place>& people) {
  cv::Mat picture = EmptyRoom();
  for (const Place& place : people) DrawPerson(picture, place.feet, place.height);
  return picture;
}

cv::Mat MatteOf(const Place& place) { return PersonMatte(place.feet, place.height); }

bool Same(const cv::Mat& a, const cv::Mat& b) {
  return a.size() == b.size() && cv::norm(a, b, cv::NORM_INF) == 0;
}

TEST(PersonMask, NobodyIsAnEmptyMask) {
  EXPECT_EQ(cv::countNonZero(MaskOf(MakeFilter(), EmptyRoom())), 0);
}

TEST(PersonMask, ThingsThatAreNotPeopleAreNotInIt) {
  cv::Mat picture = EmptyRoom();
  cv::rectangle(picture, {30, 60, 50, 40}, {30, 30, 120, 255}, cv::FILLED);
  cv::circle(picture, {200, 80}, 45, {90, 40, 30, 255}, cv::FILLED);
  EXPECT_EQ(cv::countNonZero(MaskOf(MakeFilter(), picture)), 0);
}

TEST(PersonMask, ItLiesOnThePerson) {
  for (const Place& place : {kMiddle, Place{{40, 150}, kHeight}, Place{{240, 155}, kHeight},
                             Place{{140, 150}, 90}, Place{{140, 157}, 150}}) {
    const cv::Mat mask = MaskOf(MakeFilter(), PictureOf({place}));
    EXPECT_GT(Overlap(mask, MatteOf(place)), 0.7) << place.feet << " " << place.height;
  }
}

TEST(PersonMask, SeveralPeopleAreInIt) {
  const Place left = {{70, 150}, 110};
  const Place right = {{210, 150}, kHeight};
  const cv::Mat mask = MaskOf(MakeFilter(), PictureOf({left, right}));
  EXPECT_GT(Overlap(mask, MatteOf(left) | MatteOf(right)), 0.7);
}

TEST(PersonMask, ThePersonIsFoundInALargePicture) {
  cv::Mat large;
  cv::resize(PictureOf({kMiddle}), large, {}, 4, 4, cv::INTER_CUBIC);
  cv::Mat mask;
  cv::resize(MaskOf(MakeFilter(), large), mask, kPictureSize, 0, 0, cv::INTER_NEAREST);
  EXPECT_GT(Overlap(mask, MatteOf(kMiddle)), 0.7);
}

TEST(PersonMask, ItFollowsAWalk) {
  void* filter = MakeFilter();
  for (int x = 60; x <= 220; x += 4) {
    const Place place = {{x, 150}, kHeight};
    EXPECT_GT(Overlap(MaskOf(filter, PictureOf({place})), MatteOf(place)), 0.7) << x;
  }
}

// Pictures of the same person in fog, under the noise of a camera.
std::vector<cv::Mat> NoisyPictures(int count) {
  cv::RNG random(7);
  std::vector<cv::Mat> pictures;
  for (int i = 0; i < count; ++i) {
    cv::Mat picture;
    cv::addWeighted(PictureOf({kMiddle}), 0.25, EmptyRoom(), 0.75, 0, picture);
    cv::Mat noise(picture.size(), CV_16SC4);
    random.fill(noise, cv::RNG::NORMAL, cv::Scalar::all(0), cv::Scalar::all(4));
    cv::add(picture, noise, picture, {}, CV_8UC4);
    pictures.push_back(picture);
  }
  return pictures;
}

TEST(PersonMask, NoiseMovesItsEdgesLessThanWithoutTheMasksBefore) {
  void* filter = MakeFilter();
  double change = 0;
  double change_alone = 0;
  cv::Mat before;
  cv::Mat before_alone;
  for (const cv::Mat& picture : NoisyPictures(10)) {
    const cv::Mat mask = MaskOf(filter, picture);
    const cv::Mat alone = MaskOf(MakeFilter(), picture);
    if (!before.empty()) {
      change += 1 - Overlap(mask, before);
      change_alone += 1 - Overlap(alone, before_alone);
    }
    before = mask;
    before_alone = alone;
  }
  EXPECT_LT(change, 0.75 * change_alone);
}

// The person without head and shoulders, whom the detector does not take for one.
cv::Mat PictureOfHalfHidden(const Place& place) {
  cv::Mat picture = PictureOf({place});
  EmptyRoom().rowRange(0, 75).copyTo(picture.rowRange(0, 75));
  return picture;
}

TEST(PersonMask, SomebodyLostForAFewPicturesIsHeldOnTo) {
  const cv::Mat hidden = PictureOfHalfHidden(kMiddle);
  ASSERT_EQ(cv::countNonZero(MaskOf(MakeFilter(), hidden)), 0);
  void* filter = MakeFilter();
  MaskOf(filter, PictureOf({kMiddle}));
  EXPECT_GT(Overlap(MaskOf(filter, hidden), MatteOf(kMiddle)), 0.4);
}

TEST(PersonMask, SomebodyWhoHasLeftIsForgotten) {
  void* filter = MakeFilter();
  MaskOf(filter, PictureOf({kMiddle}));
  cv::Mat picture = EmptyRoom();
  for (int i = 0; i < 12; ++i) {
    picture.at<cv::Vec4b>(0, 0)[0] ^= 1;  // another picture each time
    MaskOf(filter, picture);
  }
  picture.at<cv::Vec4b>(0, 1)[0] ^= 1;
  EXPECT_EQ(cv::countNonZero(MaskOf(filter, picture)), 0);
}

TEST(PersonMask, SomebodyLostAtTheSideHasLeft) {
  void* filter = MakeFilter();
  ASSERT_GT(cv::countNonZero(MaskOf(filter, PictureOf({{{14, 150}, kHeight}}))), 0);
  EXPECT_EQ(cv::countNonZero(MaskOf(filter, EmptyRoom())), 0);
}

TEST(PersonMask, ACutStartsAfresh) {
  void* filter = MakeFilter();
  MaskOf(filter, PictureOf({kMiddle}));
  EXPECT_EQ(cv::countNonZero(MaskOf(filter, EmptyRoom(90))), 0);
}

TEST(PersonMask, AfterACutItIsThatOfThePictureAlone) {
  const cv::Mat picture = PictureOf({kMiddle});
  void* filter = MakeFilter();
  MaskOf(filter, EmptyRoom(60));
  EXPECT_TRUE(Same(MaskOf(filter, picture), MaskOf(MakeFilter(), picture)));
}

TEST(PersonMask, AnotherSizeStartsAfresh) {
  cv::Mat half;
  cv::resize(PictureOf({kMiddle}), half, {}, 0.9, 0.9, cv::INTER_AREA);
  void* filter = MakeFilter();
  MaskOf(filter, PictureOf({{{60, 150}, kHeight}}));
  EXPECT_TRUE(Same(MaskOf(filter, half), MaskOf(MakeFilter(), half)));
}

TEST(PersonMask, TheSamePictureAgainHasTheSameMask) {
  void* filter = MakeFilter();
  MaskOf(filter, PictureOf({{{130, 150}, kHeight}}));
  const cv::Mat picture = PictureOf({kMiddle});
  const cv::Mat mask = MaskOf(filter, picture).clone();
  EXPECT_TRUE(Same(MaskOf(filter, picture), mask));
}

TEST(PersonMask, TheSamePicturesHaveTheSameMasks) {
  void* first = MakeFilter();
  void* second = MakeFilter();
  for (int x = 100; x < 180; x += 8) {
    const cv::Mat picture = PictureOf({{{x, 150}, kHeight}, {{50, 150}, 100}});
    EXPECT_TRUE(Same(MaskOf(first, picture), MaskOf(second, picture))) << x;
  }
}

TEST(PersonMask, TheCallersRandomNumbersGoOn) {
  cv::theRNG().state = 12345;
  MaskOf(MakeFilter(), PictureOf({kMiddle}));
  EXPECT_EQ(cv::theRNG().state, 12345U);
}

TEST(PersonMask, TwoFiltersWorkOnTwoThreads) {
  const auto masks_of = [](std::vector<cv::Mat>& masks) {
    void* filter = MakeFilter();
    for (int x = 100; x < 160; x += 10) {
      masks.push_back(MaskOf(filter, PictureOf({{{x, 150}, kHeight}})));
    }
  };
  std::vector<cv::Mat> here;
  std::vector<cv::Mat> there;
  std::thread other(masks_of, std::ref(there));
  masks_of(here);
  other.join();
  ASSERT_EQ(here.size(), there.size());
  for (size_t i = 0; i < here.size(); ++i) EXPECT_TRUE(Same(here[i], there[i])) << i;
}

TEST(PersonMask, OneFilterWorksOnTwoThreads) {
  void* filter = MakeFilter();
  const cv::Mat picture = PictureOf({kMiddle});
  const auto run = [&](int x) {
    for (int i = 0; i < 3; ++i) {
      const Place place = {{x + i, 150}, kHeight};
      EXPECT_EQ(MaskOf(filter, PictureOf({place})).size(), kPictureSize);
    }
  };
  std::thread other(run, 60);
  run(200);
  other.join();
}

}  // namespace
}  // namespace krv::test
