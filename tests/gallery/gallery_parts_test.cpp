// The parts that a gallery's page is made of.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

#include "gallery/gallery_page.h"
#include "gallery/gradient_css.h"
#include "gallery/html_text.h"
#include "gallery/page_template.h"
#include "gallery/parameter_rows.h"
#include "parameter_text.h"

namespace krv::tool {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

TEST(EscapeHtml, EveryCharacterOfMarkupIsWritten) {
  EXPECT_EQ(EscapeHtml("<b a=\"1\" c='2'>&amp;</b>"),
            "&lt;b a=&quot;1&quot; c=&#39;2&#39;&gt;&amp;amp;&lt;/b&gt;");
}

TEST(EscapeHtml, OtherTextsStay) {
  EXPECT_EQ(EscapeHtml(""), "");
  EXPECT_EQ(EscapeHtml("Bars 100 %, \u00E4\u4E16\U0001F3B5\n"),
            "Bars 100 %, \u00E4\u4E16\U0001F3B5\n");
}

// The vectors of RFC 4648.
TEST(DataUri, IsBase64) {
  EXPECT_EQ(DataUri("a/b", ""), "data:a/b;base64,");
  EXPECT_EQ(DataUri("a/b", "f"), "data:a/b;base64,Zg==");
  EXPECT_EQ(DataUri("a/b", "fo"), "data:a/b;base64,Zm8=");
  EXPECT_EQ(DataUri("a/b", "foo"), "data:a/b;base64,Zm9v");
  EXPECT_EQ(DataUri("a/b", "foob"), "data:a/b;base64,Zm9vYg==");
  EXPECT_EQ(DataUri("a/b", "fooba"), "data:a/b;base64,Zm9vYmE=");
  EXPECT_EQ(DataUri("a/b", "foobar"), "data:a/b;base64,Zm9vYmFy");
}

TEST(DataUri, HoldsEveryByte) {
  EXPECT_EQ(DataUri("a/b", std::string("\xFF\xEF\xBE\0\x10\x83", 6)), "data:a/b;base64,/+++ABCD");
}

TEST(FillTemplate, EveryPlaceholderIsItsValue) {
  EXPECT_EQ(FillTemplate("a{{x}}b{{long_name}}{{x}}", {{"x", "1"}, {"long_name", "2"}}), "a1b21");
  EXPECT_EQ(FillTemplate("no placeholder {x} }}", {}), "no placeholder {x} }}");
  EXPECT_EQ(FillTemplate("{{x}}", {{"x", ""}}), "");
}

TEST(FillTemplate, PlaceholdersInsideValuesStay) {
  EXPECT_EQ(FillTemplate("{{x}}{{y}}", {{"x", "{{y}}"}, {"y", "2"}}), "{{y}}2");
}

TEST(FillTemplate, APlaceholderWithoutAValueOrAnEndIsRefused) {
  EXPECT_THROW(FillTemplate("{{x}}", {{"y", "1"}}), std::invalid_argument);
  EXPECT_THROW(FillTemplate("{{x", {{"x", "1"}}), std::invalid_argument);
}

TEST(NumberText, IsAsShortAsTheKindAllows) {
  EXPECT_EQ(NumberText(kKindFloat, static_cast<double>(0.1F)), "0.1");
  EXPECT_EQ(NumberText(kKindFloat, -180), "-180");
  EXPECT_EQ(NumberText(kKindInt, std::numeric_limits<int32_t>::max()), "2147483647");
  EXPECT_EQ(NumberText(kKindInt, std::numeric_limits<int32_t>::min()), "-2147483648");
  EXPECT_EQ(NumberText(kKindColor, 0x0A0B0C), "#0A0B0C");
}

TEST(GradientCss, HasTheStopsOfTheText) {
  EXPECT_EQ(GradientCss("3,16711680,0;65280,50;255,100"),
            "linear-gradient(90deg,#FF0000 0%,#00FF00 50%,#0000FF 100%)");
  EXPECT_EQ(GradientCss("2,0,12.5;16777215,80;"),
            "linear-gradient(90deg,#000000 12.5%,#FFFFFF 80%)");
}

TEST(GradientCss, OtherTextsAreNoGradient) {
  for (const char* text : {"", "bars", "a,b", "3,1,0;2,50", "2,1,0;2,50;3,100", "1,255,0", "0,",
                           "2,1,0;2", "2,1,0;2,x", "2,1,0;16777216,9", "2,1,0;-1,9", "2,1,0;2,inf",
                           "2,1,0;2,nan", "2,1,0;;2,9", "2,1,0;2,9%)}</style>"}) {
    EXPECT_FALSE(GradientCss(text)) << text;
  }
}

host::ParameterListing Listing(ParameterKind kind, double minimum, double maximum, double value) {
  return {"size", "", kind, minimum, maximum, value, {}, false};
}

TEST(ParameterRow, NumbersHaveLimitsAndADefault) {
  const ParameterRow row = DescribeParameter(Listing(kKindFloat, 0.05, 3, 0.9));
  EXPECT_EQ(row.name, "size");
  EXPECT_EQ(row.kind, "float");
  EXPECT_EQ(row.limits, "0.05 to 3");
  EXPECT_EQ(row.default_value, "0.9");
  EXPECT_EQ(row.picture, "");
  EXPECT_EQ(DescribeParameter(Listing(kKindInt, -180, 180, 0)).limits, "-180 to 180");
}

TEST(ParameterRow, LimitsThatLeaveNoRoomAreNone) {
  EXPECT_EQ(DescribeParameter(Listing(kKindInt, 0, 0, 7)).limits, "");
}

TEST(ParameterRow, BooleansAreTrueOrFalse) {
  const ParameterRow row = DescribeParameter(Listing(kKindBool, 0, 1, 1));
  EXPECT_EQ(row.limits, "");
  EXPECT_EQ(row.default_value, "true");
  EXPECT_EQ(DescribeParameter(Listing(kKindBool, 0, 1, 0)).default_value, "false");
}

TEST(ParameterRow, AColourIsASwatchOfItself) {
  const ParameterRow row = DescribeParameter(Listing(kKindColor, 0, 0xFFFFFF, 0x22D3EE));
  EXPECT_EQ(row.limits, "") << "every colour";
  EXPECT_EQ(row.default_value, "#22D3EE");
  EXPECT_EQ(row.picture, "#22D3EE");
  EXPECT_FALSE(row.wide_picture);
  EXPECT_EQ(DescribeParameter(Listing(kKindColor, 0, 255, 9)).limits, "#000000 to #0000FF");
  EXPECT_EQ(DescribeParameter(Listing(kKindColor, 0, 0xFFFFFF, 1 << 24)).picture, "");
}

TEST(ParameterRow, AGradientIsAStripAndOtherTextsAreTexts) {
  host::ParameterListing listing = Listing(kKindText, 0, 0, 0);
  listing.default_text = "2,0,0;255,100";
  const ParameterRow gradient = DescribeParameter(listing);
  EXPECT_EQ(gradient.default_value, "2,0,0;255,100");
  EXPECT_EQ(gradient.picture, "linear-gradient(90deg,#000000 0%,#0000FF 100%)");
  EXPECT_TRUE(gradient.wide_picture);
  listing.default_text = "words";
  EXPECT_EQ(DescribeParameter(listing).default_value, "words");
  EXPECT_EQ(DescribeParameter(listing).picture, "");
}

TEST(ParametersHtml, CountsTheParametersAndMarksHiddenOnes) {
  host::EffectListing effect;
  EXPECT_THAT(ParametersHtml(effect), HasSubstr("No parameters"));
  effect.parameters = {Listing(kKindInt, 0, 5, 1)};
  EXPECT_THAT(ParametersHtml(effect), HasSubstr("<summary>1 parameter</summary>"));
  EXPECT_THAT(ParametersHtml(effect), Not(HasSubstr("hidden")));
  effect.parameters.push_back(effect.parameters.front());
  effect.parameters.back().hidden = true;
  EXPECT_THAT(ParametersHtml(effect), HasSubstr("<summary>2 parameters</summary>"));
  EXPECT_THAT(ParametersHtml(effect), HasSubstr("<small>hidden</small>"));
}

TEST(ParametersHtml, TextsAreEscaped) {
  host::EffectListing effect;
  effect.parameters = {Listing(kKindText, 0, 0, 0)};
  effect.parameters.front().name = "<i>_&";
  effect.parameters.front().default_text = "\"><script>";
  const std::string html = ParametersHtml(effect);
  EXPECT_THAT(html, HasSubstr("<th scope=\"row\">&lt;i&gt;_<wbr>&amp;</th>"));
  EXPECT_THAT(html, HasSubstr("<td>&quot;&gt;&lt;script&gt;</td>"));
}

GalleryCard Card(const std::string& display_name) {
  GalleryCard card;
  card.effect.unique_name = "fx";
  card.effect.display_name = display_name;
  card.still = "still";
  card.preview = "film";
  card.width = 640;
  card.height = 360;
  return card;
}

TEST(GalleryPage, SaysHowManyEffectsThereAre) {
  EXPECT_THAT(GalleryPage({Card("A")}), HasSubstr(">1 effect</span>"));
  EXPECT_THAT(GalleryPage({Card("A"), Card("B")}), HasSubstr(">2 effects</span>"));
}

TEST(GalleryPage, CarriesItsPicturesAndFilms) {
  const std::string page = GalleryPage({Card("A")});
  EXPECT_THAT(page, HasSubstr("src=\"data:image/jpeg;base64,c3RpbGw=\" width=\"640\""));
  EXPECT_THAT(page, HasSubstr("src=\"data:video/webm;base64,ZmlsbQ==\""));
}

TEST(GalleryPage, MayLoadNothing) {
  const std::string page = GalleryPage({Card("A")});
  EXPECT_THAT(page, HasSubstr("content=\"default-src 'none'; img-src data:; media-src data:;"));
  EXPECT_THAT(page, Not(HasSubstr("http://")));
  EXPECT_THAT(page, Not(HasSubstr("https://")));
}

TEST(GalleryPage, NamesAreEscapedWhereverTheyStand) {
  const std::string page = GalleryPage({Card("\"><b>")});
  EXPECT_THAT(page, HasSubstr("aria-label=\"Preview of &quot;&gt;&lt;b&gt;\""));
  EXPECT_THAT(page, HasSubstr("<h2>&quot;&gt;&lt;b&gt;</h2>"));
  EXPECT_THAT(page, Not(HasSubstr("<b>")));
}

}  // namespace
}  // namespace krv::tool
