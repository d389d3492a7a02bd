#include "gradient_text.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "effects/gradient.h"

namespace krv::host {
namespace {

// Whether the plug-in's own reader makes a gradient of it.
bool IsDrawn(std::string_view text) {
  try {
    return ParseGradient(text).has_value();
  } catch (const std::logic_error&) {
    return false;
  }
}

TEST(GradientText, MakesAGradientWhereThePlugInSaysSo) {
  for (const char* text :
       {"2,16711680,0;255,100", "1,255,0", "1,255,100;65280,50", "1,255,100;red,dark", "3,255,100",
        "2,", "2,255,100;nonsense;;65280,0", "2,255,0;65280,100;", "2,255,50;65280,40",
        " +1, 255 , \t+100%", "1.5,255,0", "1,-1,0", "1,16777216,0", "1,0,250", "1,0,-1", "1,0,nan",
        "1,0,inf", "16384,255,0"}) {
    EXPECT_TRUE(IsDrawn(text)) << text;
    EXPECT_TRUE(MakesGradient(text)) << text;
  }
}

TEST(GradientText, MakesNoneWhereThePlugInFailsOrPassesItOver) {
  for (const char* text : {"",
                           "3",
                           "hello",
                           "nonsense;more",
                           "0,255,0",
                           "-1,255,0",
                           "16385,255,0",
                           "two,1,0",
                           "x,255,0",
                           ",255,0",
                           " ,255,0",
                           "+-1,255,0",
                           "++1,255,0",
                           "99999999999,255,0",
                           "1,red,0",
                           "1,#FF0000,0",
                           "1,4294967296,0",
                           "1,255,",
                           "1,255,middle",
                           "1,255,1e99",
                           "2,255,0;,"}) {
    EXPECT_FALSE(IsDrawn(text)) << text;
    EXPECT_FALSE(MakesGradient(text)) << text;
  }
}

TEST(GradientText, IsOfUseWhereItMakesAGradientOrIsWhatPackagesComeWith) {
  const ParameterListing gradient{
      .name = "gradient_color", .label = "", .kind = kKindText, .default_text = "none"};
  EXPECT_TRUE(IsOfUse(gradient, "2,255,0;0,100"));
  EXPECT_TRUE(IsOfUse(gradient, ""));
  EXPECT_TRUE(IsOfUse(gradient, "none"));
  EXPECT_FALSE(IsOfUse(gradient, "hello"));
  EXPECT_FALSE(IsOfUse(gradient, "two,1,0"));
  EXPECT_TRUE(IsOfUse({.name = "title", .label = "", .kind = kKindText}, "hello"));
}

}  // namespace
}  // namespace krv::host
