#include "effects/gradient.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace krv {
namespace {

cv::Mat Parsed(std::string_view text) {
  const auto image = ParseGradient(text);
  if (!image) throw std::runtime_error("no gradient in " + std::string(text));
  return *image;
}

cv::Vec4b Texel(std::string_view text, int column) { return Parsed(text).at<cv::Vec4b>(0, column); }

template <class Error>
std::string ErrorOf(std::string_view text) {
  try {
    ParseGradient(text);
  } catch (const Error& error) {
    return error.what();
  }
  return "no error";
}

TEST(Gradient, HasOneTexelForEachCount) {
  const cv::Mat image = Parsed("3,16711680,0;65280,50;255,100");
  EXPECT_EQ(image.type(), CV_8UC4);
  EXPECT_EQ(image.rows, 1);
  EXPECT_EQ(image.cols, 3);
}

TEST(Gradient, TexelIsBlueGreenRedPosition) {
  constexpr std::string_view kText = "3,16711680,0;65280,50;255,100";
  EXPECT_EQ(Texel(kText, 0), cv::Vec4b(0, 0, 255, 0));
  EXPECT_EQ(Texel(kText, 1), cv::Vec4b(0, 255, 0, 127));
  EXPECT_EQ(Texel(kText, 2), cv::Vec4b(255, 0, 0, 255));
  EXPECT_EQ(Texel("1,1193046,0", 0), cv::Vec4b(0x56, 0x34, 0x12, 0));
}

TEST(Gradient, PositionIsCutToAByte) {
  EXPECT_EQ(Texel("1,0,50", 0)[3], 127);
  EXPECT_EQ(Texel("1,0,99.9", 0)[3], 254);
  EXPECT_EQ(Texel("1,0,0.39", 0)[3], 0);
}

TEST(Gradient, PositionOutsideThePercentagesIsLimited) {
  EXPECT_EQ(Texel("1,0,250", 0)[3], 255);
  EXPECT_EQ(Texel("1,0,-1", 0)[3], 0);
  EXPECT_EQ(Texel("1,0,inf", 0)[3], 255);
  EXPECT_EQ(Texel("1,0,nan", 0)[3], 0);
}

TEST(Gradient, EntriesBeyondTheCountAreDropped) {
  const cv::Mat image = Parsed("1,255,100;65280,50;16711680,0");
  EXPECT_EQ(image.cols, 1);
  EXPECT_EQ(image.at<cv::Vec4b>(0, 0), cv::Vec4b(255, 0, 0, 255));
}

TEST(Gradient, TexelsWithoutAnEntryAreZero) {
  EXPECT_EQ(Texel("3,255,100", 1), cv::Vec4b(0, 0, 0, 0));
  EXPECT_EQ(Texel("2,", 0), cv::Vec4b(0, 0, 0, 0));
}

TEST(Gradient, EntryWithoutACommaIsSkipped) {
  constexpr std::string_view kText = "2,255,100;nonsense;;65280,0";
  EXPECT_EQ(Texel(kText, 0), cv::Vec4b(255, 0, 0, 255));
  EXPECT_EQ(Texel(kText, 1), cv::Vec4b(0, 255, 0, 0));
}

TEST(Gradient, TextWithoutACommaIsNone) {
  EXPECT_FALSE(ParseGradient(""));
  EXPECT_FALSE(ParseGradient("3"));
  EXPECT_FALSE(ParseGradient("nonsense;more"));
}

TEST(Gradient, CountOutsideTheTextureWidthsIsNone) {
  EXPECT_FALSE(ParseGradient("0,255,0"));
  EXPECT_FALSE(ParseGradient("-1,255,0"));
  EXPECT_FALSE(ParseGradient("16385,255,0"));
  EXPECT_FALSE(ParseGradient("2147483647,255,0"));
  EXPECT_EQ(Parsed("16384,255,0").cols, 16384);
}

TEST(Gradient, NumbersMayBeSpacedAndSigned) {
  const cv::Vec4b texel = Texel(" +1, 255 , \t+100%", 0);
  EXPECT_EQ(texel, cv::Vec4b(255, 0, 0, 255));
}

TEST(Gradient, CountThatIsNoNumberIsAnError) {
  EXPECT_EQ(ErrorOf<std::invalid_argument>("x,255,0"), "invalid stoi argument");
  EXPECT_EQ(ErrorOf<std::invalid_argument>(",255,0"), "invalid stoi argument");
  EXPECT_EQ(ErrorOf<std::invalid_argument>("+-1,255,0"), "invalid stoi argument");
  EXPECT_EQ(ErrorOf<std::out_of_range>("99999999999,255,0"), "stoi argument out of range");
}

TEST(Gradient, ColourThatIsNoNumberIsAnError) {
  EXPECT_EQ(ErrorOf<std::invalid_argument>("1,red,0"), "invalid stoi argument");
  EXPECT_EQ(ErrorOf<std::out_of_range>("1,4294967296,0"), "stoi argument out of range");
}

TEST(Gradient, PositionThatIsNoNumberIsAnError) {
  EXPECT_EQ(ErrorOf<std::invalid_argument>("1,255,"), "invalid stof argument");
  EXPECT_EQ(ErrorOf<std::invalid_argument>("1,255,middle"), "invalid stof argument");
  EXPECT_EQ(ErrorOf<std::out_of_range>("1,255,1e99"), "stof argument out of range");
}

}  // namespace
}  // namespace krv
