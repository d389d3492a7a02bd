// The gallery's page in a browser.
#include "gallery/gallery_page.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "gallery/browser.h"
#include "host/host_test_files.h"
#include "host/media_maker.h"
#include "media/jpeg_encoder.h"
#include "media/media_error.h"
#include "media/media_writer.h"
#include "page_probe.h"
#include "support/process.h"

namespace krv::tool {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr int kWidth = 64;
constexpr int kHeight = 36;

// A window is never as narrow as a phone, a frame may be.
constexpr char kPhone[] =
    "<!DOCTYPE html>\n<title></title>\n"
    "<script>addEventListener('message', event => document.title = event.data);</script>\n"
    "<iframe src=\"index.html\" width=\"390\" height=\"844\" frameborder=\"0\"></iframe>\n";

class GalleryPageInABrowser : public host::FilesTest {
 protected:
  GalleryPageInABrowser() { host::SilenceAvLog(); }

  // Half a second of grey that becomes brighter.
  std::string Film() const {
    const auto path = Path("film.webm");
    host::MovieSettings settings;
    settings.output = host::ChooseOutputFormat(path, false);
    settings.video = {kWidth, kHeight, {30, 1}, 1, 1};
    settings.audio = {48000, 2, 0};
    host::MediaWriter writer(path, settings);
    host::Picture picture(kWidth, kHeight);
    for (int frame = 0; frame < 15; ++frame) {
      const auto grey = static_cast<uint8_t>(60 + 10 * frame);
      picture.Fill(grey, grey, grey, 255);
      writer.Write(picture, std::vector<int16_t>(3200));
    }
    writer.Finish();
    return host::ReadFile(path);
  }

  GalleryCard Card(const std::string& unique_name, const std::string& display_name) const {
    host::Picture still(kWidth, kHeight);
    still.Fill(200, 80, 40, 255);
    GalleryCard card;
    card.effect.unique_name = unique_name;
    card.effect.display_name = display_name;
    card.effect.parameters = {
        {"size", "size", kKindFloat, 0, 10, 0.5, {}, false},
        {"tint", "tint", kKindColor, 0, 0xFFFFFF, 0x2080FF, {}, true},
        {"gradient_color", "", kKindText, 0, 0, 0, "2,255,0;65280,100", false}};
    card.still = host::EncodeJpeg(still);
    card.preview = Film();
    card.width = kWidth;
    card.height = kHeight;
    return card;
  }

  // Opens the page with the probe in it, in a window or on a phone.
  test::BrowserOutcome Open(const std::string& page, const test::BrowserOptions& options,
                            const std::string& file = "index.html") const {
    host::WriteFile(Path("index.html"), test::WithScript(page, test::k_page_probe_js));
    host::WriteFile(Path("phone.html"), kPhone);
    return test::OpenPage(Path(file), options);
  }

  // The facts that the probe finds; nothing may fail on the way.
  nlohmann::json Probe(const std::string& page, const test::BrowserOptions& options = {},
                       const std::string& file = "index.html") const {
    const test::BrowserOutcome outcome = Open(page, options, file);
    EXPECT_THAT(outcome.console, IsEmpty());
    auto facts = nlohmann::json::parse(outcome.title);
    EXPECT_THAT(facts["failures"], IsEmpty()) << facts["failures"];
    return facts;
  }

  std::string TwoEffects() const {
    return GalleryPage({Card("fx_bars", "Spectrum bars"), Card("fx_lines", "Line")});
  }
};

TEST_F(GalleryPageInABrowser, EveryCardHasAPictureAndAFilmThatDecode) {
  const nlohmann::json facts = Probe(TwoEffects());
  ASSERT_EQ(facts["cards"].size(), 2u);
  EXPECT_EQ(facts["cards"][0]["name"], "Spectrum bars");
  EXPECT_EQ(facts["cards"][1]["name"], "Line");
  for (const auto& card : facts["cards"]) {
    EXPECT_EQ(card["decoded"], true);
    EXPECT_EQ(card["focusable"], true);
    EXPECT_THAT(card["image"], ElementsAre(kWidth, kHeight));
    EXPECT_THAT(card["film"], ElementsAre(kWidth, kHeight));
    EXPECT_GE(card["ready"], 2) << "HAVE_CURRENT_DATA";
    EXPECT_NEAR(card["seconds"].get<double>(), 0.5, 0.05);
  }
}

TEST_F(GalleryPageInABrowser, WhatTheProgramMakesOfPackagesIsSuchAPage) {
  constexpr char kWhite[] = "#version 120\nvoid main() {\n  gl_FragColor = vec4(1.0);\n}\n";
  WritePackage("packages/a", "fx.a", kWhite);
  WritePackage("packages/b", "fx.b", kWhite);
  const host::MediaMaker media;
  const auto clip =
      media.Make("clip.mkv", host::NumberedFrames("30", 0.3) +
                                 host::RampSamples(48000, "stereo", 0.3) + "-c:a pcm_s16le");
  const test::ProgramOutcome outcome = test::RunProgram(
      KRV_PROGRAM, "gallery \"" + host::Utf8(clip) + "\" --packages \"" +
                       host::Utf8(Path("packages")) + "\" -o \"" + host::Utf8(Path("out")) + "\"");
  ASSERT_EQ(outcome.code, 0) << outcome.error_output;
  const nlohmann::json facts = Probe(host::ReadFile(Path("out/index.html")));
  ASSERT_EQ(facts["cards"].size(), 2u);
  for (const auto& card : facts["cards"]) {
    EXPECT_EQ(card["decoded"], true);
    EXPECT_THAT(card["image"], ElementsAre(64, 48));
    EXPECT_THAT(card["film"], ElementsAre(64, 48));
    EXPECT_GE(card["ready"], 2) << "HAVE_CURRENT_DATA";
  }
}

TEST_F(GalleryPageInABrowser, PreviewsPlayOneAtATimeByMouseTouchAndKeyboard) {
  const nlohmann::json playing = Probe(TwoEffects())["playing"];
  EXPECT_THAT(playing["hover"], ElementsAre(true, false));
  EXPECT_THAT(playing["away"], ElementsAre(false, false));
  EXPECT_THAT(playing["touch"], ElementsAre(false, false)) << "a tap plays by its click";
  EXPECT_THAT(playing["click"], ElementsAre(true, false));
  EXPECT_EQ(playing["started"], true);
  EXPECT_EQ(playing["shown"], true);
  EXPECT_THAT(playing["clickAgain"], ElementsAre(false, false));
  EXPECT_THAT(playing["focus"], ElementsAre(true, false));
  EXPECT_THAT(playing["focusNext"], ElementsAre(false, true));
  EXPECT_THAT(playing["blur"], ElementsAre(false, false));
}

TEST_F(GalleryPageInABrowser, SoundIsOffUntilTheUserWantsIt) {
  const nlohmann::json playing = Probe(TwoEffects())["playing"];
  EXPECT_EQ(playing["muted"], true);
  EXPECT_EQ(playing["mutedWithSound"], false);
}

TEST_F(GalleryPageInABrowser, TheFilterShowsWhatHasEveryWordInItsNames) {
  const nlohmann::json filter = Probe(TwoEffects())["filter"];
  EXPECT_THAT(filter[0]["shown"], ElementsAre("Spectrum bars")) << filter[0];
  EXPECT_EQ(filter[0]["count"], "1 effect");
  EXPECT_THAT(filter[1]["shown"], ElementsAre("Line"));
  EXPECT_THAT(filter[2]["shown"], IsEmpty());
  EXPECT_EQ(filter[2]["empty"], true);
  EXPECT_THAT(filter[3]["shown"], ElementsAre("Spectrum bars", "Line"));
  EXPECT_EQ(filter[3]["count"], "2 effects");
  EXPECT_EQ(filter[3]["empty"], false);
}

// The contrast is what WCAG 2.2 asks of text, level AA.
TEST_F(GalleryPageInABrowser, TextIsReadableInLightAndDark) {
  const nlohmann::json light = Probe(TwoEffects());
  const nlohmann::json dark = Probe(TwoEffects(), {.dark = true});
  EXPECT_NE(light["background"], dark["background"]);
  EXPECT_GE(light["contrast"], 4.5);
  EXPECT_GE(dark["contrast"], 4.5);
}

TEST_F(GalleryPageInABrowser, APhoneNeedsNoSidewaysScrolling) {
  const std::string name = "audio_visualization_with_a_name_that_is_longer_than_any_phone_is_wide";
  GalleryCard card = Card(name, name);
  card.effect.parameters.push_back({name, name, kKindText, 0, 0, 0, std::string(120, 'x'), true});
  const nlohmann::json facts = Probe(GalleryPage({card, Card("fx", "Line")}), {}, "phone.html");
  EXPECT_EQ(facts["width"], 390);
}

TEST_F(GalleryPageInABrowser, WithReducedMotionOnlyAClickPlays) {
  const nlohmann::json playing = Probe(TwoEffects(), {.reduced_motion = true})["playing"];
  EXPECT_THAT(playing["hover"], ElementsAre(false, false));
  EXPECT_THAT(playing["focus"], ElementsAre(false, false));
  EXPECT_THAT(playing["click"], ElementsAre(true, false));
  EXPECT_EQ(playing["started"], true);
}

TEST_F(GalleryPageInABrowser, TextsOfPackagesAreNeverMarkup) {
  const std::string nasty = "</h2><script>alert(1)</script><img src=x onerror=alert(1)>\"'&amp;";
  GalleryCard card = Card(nasty, nasty);
  const nlohmann::json tame = Probe(TwoEffects());
  card.effect.parameters[0].name = nasty;
  card.effect.parameters[2].default_text = nasty;
  const nlohmann::json facts = Probe(GalleryPage({card, Card("fx", "Line")}));
  EXPECT_EQ(facts["cards"][0]["name"], nasty);
  // The text in place of the gradient's strip, and no place to break after an underscore.
  EXPECT_EQ(facts["elements"], tame["elements"].get<int>() - 1);
}

// What the tests above rely on.
TEST_F(GalleryPageInABrowser, WhatFailsToLoadIsNoticed) {
  std::string page = TwoEffects();
  page.replace(page.find("src=\"data:image"), 5, "src=\"http://localhost/a.png\" alt=\"");
  const test::BrowserOutcome outcome = Open(page, {});
  EXPECT_THAT(outcome.console, ::testing::Contains(HasSubstr("Content Security Policy")));
  const auto facts = nlohmann::json::parse(outcome.title);
  EXPECT_THAT(facts["failures"], ::testing::Contains(HasSubstr("http://localhost/a.png")));
  EXPECT_EQ(facts["cards"][0]["decoded"], false);
  EXPECT_EQ(facts["cards"][1]["decoded"], true);
}

}  // namespace
}  // namespace krv::tool
