// What `krv bench` is made of.
#include <gmock/gmock.h>

#include <numeric>

#include "bench/bench_options.h"
#include "bench/bench_scene.h"
#include "bench/figures.h"
#include "bench/least_work.h"
#include "bench/package_facts.h"
#include "bench/stage_times.h"
#include "host/host_test_files.h"
#include "package_copy.h"

namespace krv::tool {
namespace {

using host::DeviceUse;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Pair;

TEST(BenchFigures, SpreadIsMedianAndQuartiles) {
  const Spread spread = SpreadOf({5, 1, 4, 2, 3});
  EXPECT_EQ(spread.lower, 2);
  EXPECT_EQ(spread.median, 3);
  EXPECT_EQ(spread.upper, 4);
}

TEST(BenchFigures, SpreadOfAnEvenNumberLiesBetween) {
  const Spread spread = SpreadOf({1, 2, 3, 4});
  EXPECT_EQ(spread.lower, 1.75);
  EXPECT_EQ(spread.median, 2.5);
  EXPECT_EQ(spread.upper, 3.25);
}

TEST(BenchFigures, SpreadOfOneValueIsThatValue) {
  const Spread spread = SpreadOf({7});
  EXPECT_EQ(spread.lower, 7);
  EXPECT_EQ(spread.upper, 7);
  EXPECT_EQ(SpreadOf({}).median, 0);
}

TEST(BenchFigures, StopwatchCountsTheProcessorsTime) {
  const Stopwatch stopwatch;
  Cost cost;
  volatile uint64_t work = 0;
  while (cost.cpu_ms < 50) {  // ends only when processor time is counted
    for (int i = 0; i < 100000; ++i) work = work + 1;
    cost = stopwatch.Elapsed();
  }
  EXPECT_GT(cost.wall_ms, 0);
}

TEST(BenchStages, AreTakenFromTheLogLine) {
  EXPECT_THAT(ParseStageTimes("<audio_visual> Frame times (us) : audio=21 pass1=1300.5"),
              ElementsAre(Pair("audio", 21), Pair("pass1", 1300.5)));
}

TEST(BenchStages, OtherLinesHaveNone) {
  EXPECT_THAT(ParseStageTimes("<audio_visual> Input size error"), IsEmpty());
  EXPECT_THAT(ParseStageTimes(""), IsEmpty());
}

TEST(BenchStages, WordsThatAreNoTimesArePassedOver) {
  EXPECT_THAT(ParseStageTimes("Frame times (us) : a b= c=x d=4us e=5"), ElementsAre(Pair("e", 5)));
}

TEST(BenchStages, SpreadsAreInMillisecondsAndInTheOrderOfTheFrame) {
  const auto spreads = StageSpreads({{{"upload", 1000}, {"pass1", 2000}},
                                     {{"upload", 3000}, {"pass1", 4000}},
                                     {{"upload", 5000}, {"blend", 7000}}});
  ASSERT_EQ(spreads.size(), 3u);
  EXPECT_EQ(spreads[0].name, "upload");
  EXPECT_EQ(spreads[0].spread.median, 3);
  EXPECT_EQ(spreads[1].name, "pass1");
  EXPECT_EQ(spreads[1].spread.median, 3);
  EXPECT_EQ(spreads[2].name, "blend");
  EXPECT_EQ(spreads[2].spread.median, 7);
}

TEST(BenchScene, SoundGoesOnFromFrameToFrameAndIsTheSameAgain) {
  const BenchScene scene({32, 16});
  const BenchScene again({64, 64});
  const host::FrameAudio first = scene.Audio(0);
  const host::FrameAudio second = scene.Audio(1);
  EXPECT_EQ(first.sample_frames, 1600);
  EXPECT_EQ(second.start_sample, 1600);
  EXPECT_EQ(second.samples, first.samples + 2 * 1600);
  EXPECT_EQ(scene.Audio(30).samples, first.samples);
  EXPECT_TRUE(std::equal(first.samples, first.samples + 3200, again.Audio(0).samples));
  const int64_t loudness =
      std::accumulate(first.samples, first.samples + 3200, int64_t{0},
                      [](int64_t sum, int16_t sample) { return sum + std::abs(sample); });
  EXPECT_GT(loudness / 3200, 1000);
}

TEST(ReadsName, DeclaringIsNotReading) {
  EXPECT_FALSE(ReadsName("uniform sampler2D background_tex;\n", "background_tex"));
  EXPECT_TRUE(ReadsName("uniform sampler2D background_tex;\nx = texture2D(background_tex, at);\n",
                        "background_tex"));
}

TEST(ReadsName, CommentsAndLongerNamesDoNotCount) {
  EXPECT_FALSE(
      ReadsName("uniform sampler2D a;  // a, the picture\n/* a\n a */ float ab = my_a;", "a"));
  EXPECT_FALSE(ReadsName("a /* without an end a", "a"));
}

class BenchFacts : public host::FilesTest {
 protected:
  PackageFacts Read(const std::string& keys, const std::string& shader = "void main() {}") {
    WritePackage("p", "fx", shader, keys);
    std::string error;
    const auto facts = ReadPackageFacts(Path("p"), &error);
    EXPECT_TRUE(facts) << error;
    return facts.value_or(PackageFacts());
  }
};

TEST_F(BenchFacts, ComeFromTheDescription) {
  const PackageFacts facts = Read(R"("quality": "low", "without_blend": true)");
  EXPECT_EQ(facts.unique_name, "fx");
  EXPECT_EQ(facts.quality, "low");
  EXPECT_EQ(facts.passes, 1);
  EXPECT_TRUE(facts.without_blend);
  EXPECT_FALSE(facts.blends_by_gl);
  EXPECT_FALSE(facts.original);
  EXPECT_FALSE(facts.reads_background);
}

TEST_F(BenchFacts, QualityIsMediumUnlessSaid) {
  EXPECT_EQ(Read(R"("params": [])").quality, "medium");
  EXPECT_EQ(Read(R"("quality": "best")").quality, "medium");
}

TEST_F(BenchFacts, PictureIsReadWhenTheFirstShaderDoes) {
  const std::string reading =
      "uniform sampler2D background_tex;\nvoid main() { texture2D(background_tex, vec2(0.0)); }";
  EXPECT_TRUE(Read(R"("params": [])", reading).reads_background);
  host::WriteFile(Path("p/description.json"),
                  R"({"unique_name": "fx", "opengl_frag": ["b.frag", "a.frag"]})");
  host::WriteFile(Path("p/b.frag"), "void main() {}");
  std::string error;
  const auto facts = ReadPackageFacts(Path("p"), &error);
  ASSERT_TRUE(facts) << error;
  EXPECT_EQ(facts->passes, 2);
  EXPECT_FALSE(facts->reads_background);
}

// As the plug-in chooses its compositor.
TEST_F(BenchFacts, GlBlendsWhereThePackageReachesTheBlend) {
  for (const char* keys : {
           R"("blend_script": "own.frag")",
           R"("opengl_vert": ["camera.vert"])",
           R"("params": [{"name": "alpha", "type": 5}, {"name": "blend", "type": 3}])",
           R"("params": [{"name": "effect_tex", "type": 3}])",
       }) {
    EXPECT_TRUE(Read(keys).blends_by_gl) << keys;
  }
  for (const char* keys : {
           R"("blend_script": "", "opengl_vert": [])",
           R"("params": [{"name": "blend_speed", "type": 5}])",
       }) {
    EXPECT_FALSE(Read(keys).blends_by_gl) << keys;
  }
}

TEST_F(BenchFacts, OfABrokenDescriptionNameTheFile) {
  host::WriteFile(Path("p/description.json"), R"({"unique_name": 1})");
  std::string error;
  EXPECT_FALSE(ReadPackageFacts(Path("p"), &error));
  EXPECT_THAT(error, HasSubstr("description.json"));
  EXPECT_FALSE(ReadPackageFacts(Path("none"), &error));
  EXPECT_THAT(error, HasSubstr("cannot be read"));
}

TEST_F(BenchFacts, AnotherQualityIsWrittenIntoACopy) {
  WritePackage("p", "fx", "void main() {}", R"("quality": "low")");
  std::string error;
  host::PackageChanges changes;
  changes.quality = "high";
  const auto copy = host::PackageCopy::Create(Path("p"), changes, &error);
  ASSERT_NE(copy, nullptr) << error;
  const auto facts = ReadPackageFacts(copy->folder(), &error);
  ASSERT_TRUE(facts) << error;
  EXPECT_EQ(facts->quality, "high");
  EXPECT_EQ(facts->unique_name, "fx");
}

TEST(BenchEffectSize, IsTheQualitysShorterSide) {
  PackageFacts facts;
  const auto size = [&facts](const char* quality) {
    facts.quality = quality;
    const FrameSize effect = EffectSizeOf(facts, {1920, 1080});
    return std::pair(effect.width, effect.height);
  };
  EXPECT_THAT(size("low"), Pair(568, 320));
  EXPECT_THAT(size("medium"), Pair(853, 480));
  EXPECT_THAT(size("high"), Pair(1280, 720));
  facts.original = true;
  EXPECT_THAT(size("low"), Pair(1920, 1080));
}

class LeastWorkPlanned : public ::testing::Test {
 protected:
  LeastWorkPlan Plan(DeviceUse form = DeviceUse::kMemory) {
    return PlanLeastWork(facts_, form, {1920, 1080});
  }
  PackageFacts facts_{.unique_name = "fx", .passes = 1};
};

TEST_F(LeastWorkPlanned, FigureOverAFrameInMemoryIsReadBackAtItsOwnSize) {
  const LeastWorkPlan plan = Plan();
  EXPECT_TRUE(plan.copy);
  EXPECT_FALSE(plan.upload);
  EXPECT_EQ(plan.passes, 1);
  EXPECT_EQ(plan.pass_size.height, 480);
  EXPECT_FALSE(plan.blend);
  EXPECT_TRUE(plan.read_back);
  EXPECT_EQ(plan.read_size.height, 480);
}

TEST_F(LeastWorkPlanned, PictureIsUploadedForAPassThatReadsIt) {
  facts_.reads_background = true;
  EXPECT_TRUE(Plan().upload);
  EXPECT_TRUE(Plan().copy);
}

TEST_F(LeastWorkPlanned, ABlendByGlTakesEverythingThroughGl) {
  facts_.blends_by_gl = true;
  const LeastWorkPlan plan = Plan();
  EXPECT_FALSE(plan.copy);
  EXPECT_TRUE(plan.upload);
  EXPECT_TRUE(plan.blend);
  EXPECT_TRUE(plan.read_back);
  EXPECT_EQ(plan.read_size.height, 1080);
}

TEST_F(LeastWorkPlanned, OriginalIsDrawnAndReadBackAtTheOutputsSize) {
  facts_.original = true;
  const LeastWorkPlan plan = Plan();
  EXPECT_FALSE(plan.copy);
  EXPECT_FALSE(plan.blend);
  EXPECT_EQ(plan.pass_size.height, 1080);
  EXPECT_EQ(plan.read_size.height, 1080);
}

TEST_F(LeastWorkPlanned, FrameOnTheGpuStaysThere) {
  facts_.reads_background = true;
  const LeastWorkPlan plan = Plan(DeviceUse::kGpu);
  EXPECT_FALSE(plan.copy);
  EXPECT_FALSE(plan.upload);
  EXPECT_TRUE(plan.blend);
  EXPECT_FALSE(plan.read_back);
}

}  // namespace
}  // namespace krv::tool
