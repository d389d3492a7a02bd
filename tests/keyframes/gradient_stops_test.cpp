#include "keyframes/gradient_stops.h"

#include <gmock/gmock.h>

namespace krv::tool {
namespace {

using ::testing::ElementsAre;

const GradientStops kTwo = {{0xFF0000, 0}, {0x0000FF, 100}};

TEST(GradientStops, TextsComeBack) {
  for (const char* text :
       {"2,16711680,0;255,100", "3,16711680,0;65280,50;255,100", "3,1,12.5;2,12.5;3,99.9"}) {
    const auto stops = ParseGradientStops(text);
    ASSERT_TRUE(stops) << text;
    EXPECT_EQ(GradientText(*stops), text);
  }
}

TEST(GradientStops, OtherTextsAreNone) {
  for (const char* text :
       {"", "2", "hello", "1,255,0", "0,", "2,255,0", "2,255,0;255,50;255,100", "2,255,0;255",
        "2,255,0;255,101", "2,255,-1;255,50", "2,255,50;255,40", "2,16777216,0;255,50",
        "2,-1,0;255,50", "2,255,nan;255,50", " 2,255,0;255,50", "2,255,0;255,50 ", "2,,0;1,1",
        "2,255,0;;255,50", "4097,255,0;255,50"}) {
    EXPECT_FALSE(ParseGradientStops(text)) << text;
  }
}

TEST(MixGradients, StopsOfEquallyManyGoOneByOne) {
  const GradientStops end = {{0x00FF00, 50}, {0x0000FF, 80}};
  EXPECT_THAT(MixGradients(kTwo, end, 0.5),
              ElementsAre(GradientStop{0x808000, 25}, GradientStop{0x0000FF, 90}));
  EXPECT_EQ(MixGradients(kTwo, end, 0), kTwo);
  EXPECT_EQ(MixGradients(kTwo, end, 1), end);
}

TEST(MixGradients, MissingStopsGetTheColourThatIsThere) {
  const GradientStops end = {{0x000000, 0}, {0x00FF00, 50}, {0x000000, 100}};
  EXPECT_THAT(MixGradients(kTwo, end, 0),
              ElementsAre(kTwo[0], GradientStop{0x800080, 50}, kTwo[1]));
  EXPECT_EQ(MixGradients(kTwo, end, 1), end);
  EXPECT_THAT(MixGradients(kTwo, end, 0.5),
              ElementsAre(GradientStop{0x800000, 0}, GradientStop{0x408040, 50},
                          GradientStop{0x000080, 100}));
}

TEST(MixGradients, BeyondTheOutermostStopsTheirColoursReach) {
  const GradientStops inner = {{0x111111, 20}, {0x222222, 40}, {0x333333, 60}};
  EXPECT_THAT(MixGradients(inner, kTwo, 0),
              ElementsAre(GradientStop{0x111111, 0}, inner[0], inner[1], inner[2],
                          GradientStop{0x333333, 100}));
}

TEST(MixGradients, HardEdgesStay) {
  const GradientStops edge = {{0x000000, 0}, {0x0A0A0A, 50}, {0xF0F0F0, 50}, {0xFFFFFF, 100}};
  EXPECT_EQ(MixGradients(edge, kTwo, 0), edge);
  EXPECT_THAT(MixGradients(edge, kTwo, 1), ElementsAre(kTwo[0], GradientStop{0x800080, 50},
                                                       GradientStop{0x800080, 50}, kTwo[1]));
  const GradientStops middle = {{0x000000, 0}, {0x808080, 50}, {0xFFFFFF, 100}};
  EXPECT_THAT(MixGradients(middle, edge, 0),
              ElementsAre(middle[0], middle[1], middle[1], middle[2]));
}

}  // namespace
}  // namespace krv::tool
