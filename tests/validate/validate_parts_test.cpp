// What the tests of the validator look at things with: each must see what is wrong.
#include <glad/gl.h>
#include <gmock/gmock.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <set>
#include <stdexcept>
#include <utility>

#include "platform/child_process.h"
#include "support/gl_fixture.h"
#include "support/scratch_folder.h"
#include "validate/check.h"
#include "validate/examiner.h"
#include "validate/gl_state.h"
#include "validate/guarded_picture.h"
#include "validate/hostile_host.h"

namespace krv::tool {
namespace {

using host::platform::ChildEnd;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

TEST(Checks, HaveNamesOfTheirOwnAndAStrictness) {
  std::set<std::string> names;
  for (const Check& check : AllChecks()) {
    EXPECT_TRUE(names.insert(check.name).second) << check.name;
    EXPECT_GE(check.strictness, 1) << check.name;
    EXPECT_LE(check.strictness, 10) << check.name;
    EXPECT_EQ(FindCheck(check.name), &check);
  }
  EXPECT_EQ(FindCheck("frames"), nullptr);
}

class Journals : public ::testing::Test {
 protected:
  Journal Read() { return ReadJournal(file_); }
  test::ScratchFolder folder_;
  std::filesystem::path file_ = folder_.path() / "journal";
};

TEST_F(Journals, SayWhatWasDoneBeforeTheProcessEnded) {
  JournalWriter writer(file_);
  Examiner examiner(&writer);
  examiner.Step("the first step");
  examiner.Expect(true, "a", "b");
  examiner.Step("the last\nstep");
  EXPECT_EQ(Read().step, "the last step");
  EXPECT_EQ(Read().checks, 1);
  EXPECT_FALSE(Read().complete);
  examiner.Finish();
  EXPECT_TRUE(Read().complete);
  EXPECT_THAT(Read().failures, IsEmpty());
}

TEST_F(Journals, NameWhatWasExpectedAndWhatCame) {
  JournalWriter writer(file_);
  Examiner examiner(&writer);
  examiner.Step("a call");
  EXPECT_FALSE(examiner.ExpectCode("slot 4", 3, {kOk, kFailed}));
  EXPECT_TRUE(examiner.ExpectCode("slot 4", kFailed, {kOk, kFailed}));
  examiner.Finish();
  EXPECT_THAT(Read().failures, ElementsAre("a call: expected 0 or 4 from slot 4, came 3"));
  EXPECT_EQ(Read().checks, 2);
}

TEST_F(Journals, NameAnExceptionOnce) {
  JournalWriter writer(file_);
  Examiner examiner(&writer);
  examiner.Step("a call");
  const int32_t code =
      examiner.Call("slot 1", []() -> int32_t { throw std::runtime_error("no memory"); });
  examiner.ExpectCode("slot 1", code, {kOk});
  EXPECT_THAT(
      Read().failures,
      ElementsAre("a call: expected no exception from slot 1, came one that says: no memory"));
}

TEST_F(Journals, CountTheFailuresOfOneKindThatAreTooMany) {
  JournalWriter writer(file_);
  Examiner examiner(&writer);
  examiner.Step("x");
  for (int i = 0; i < 12; ++i) examiner.Expect(false, "a", "b");
  examiner.Expect(false, "c", "d");
  examiner.Finish();
  EXPECT_THAT(Read().failures, ElementsAre("x: expected a, came b", "x: expected a, came b",
                                           "x: expected c, came d", "and 10 more"));
}

TEST_F(Journals, OfAProcessThatNeverBeganAreEmpty) {
  EXPECT_FALSE(Read().complete);
  EXPECT_EQ(Read().checks, 0);
}

class Guards : public ::testing::TestWithParam<int32_t> {};

TEST_P(Guards, SeeAByteChangedBeforeBetweenAndBehindTheRows) {
  const PictureShape shape{.width = 5, .height = 3, .pixel_type = GetParam(), .padding = 2};
  const auto row = static_cast<ptrdiff_t>(shape.RowBytes());
  const auto stride = static_cast<ptrdiff_t>(shape.Stride());
  for (const ptrdiff_t at :
       {ptrdiff_t{-1}, row, row + 1, stride + row, 3 * stride - 1, 3 * stride}) {
    GuardedPicture picture(shape);
    picture.FillRows(1);
    ASSERT_TRUE(picture.GuardsAreWhole());
    picture.pixels()[at] ^= 1;
    EXPECT_FALSE(picture.GuardsAreWhole()) << at;
    EXPECT_TRUE(picture.RowsHold(1)) << at;
  }
}

TEST_P(Guards, LetTheRowsBeWritten) {
  const PictureShape shape{.width = 5, .height = 3, .pixel_type = GetParam(), .padding = 2};
  GuardedPicture picture(shape);
  const Rows pattern = TestPattern(shape);
  picture.SetRows(pattern);
  EXPECT_TRUE(picture.GuardsAreWhole());
  EXPECT_EQ(picture.TakeRows(), pattern);
  picture.FillRows(9);
  EXPECT_TRUE(picture.RowsHold(9));
  picture.pixels()[shape.Stride() * 2 + shape.RowBytes() - 1] = 8;
  EXPECT_FALSE(picture.RowsHold(9));
}

INSTANTIATE_TEST_SUITE_P(Types, Guards, ::testing::Values(kPixel8, kPixel16, kPixelFloat));

TEST(Pictures, WithNanOrInfinityAreNotFinite) {
  for (const float value : {NAN, INFINITY, -INFINITY}) {
    Rows rows = TestPattern({.width = 2, .height = 2, .pixel_type = kPixelFloat});
    EXPECT_TRUE(IsFinite(rows, kPixelFloat));
    std::memcpy(&rows[rows.size() - sizeof(value)], &value, sizeof(value));
    EXPECT_FALSE(IsFinite(rows, kPixelFloat));
  }
}

TEST(Hosts, WithoutAProviderASuiteOrAnOpenGlDeviceHaveNoUsableDevice) {
  EXPECT_TRUE((HostPlan{.device_apis = {1, 2}}).HasUsableDevice());
  EXPECT_FALSE(HostPlan{}.HasUsableDevice());
  EXPECT_FALSE((HostPlan{.has_provider = false, .device_apis = {2}}).HasUsableDevice());
  EXPECT_FALSE(
      (HostPlan{.missing_suites = {kGpuDeviceSuiteName}, .device_apis = {2}}).HasUsableDevice());
  EXPECT_FALSE((HostPlan{.device_apis = {1, 2}, .vanishing_devices = 1}).HasUsableDevice());
  EXPECT_FALSE((HostPlan{.device_apis = {2}, .refuses_device_info = true}).HasUsableDevice());
}

class GlWatch : public test::GlTest {};

TEST_F(GlWatch, HostileStateGoesAsItCame) {
  const GlState before = ReadGlState();
  {
    const HostileGlState hostile;
    EXPECT_THAT(ForbiddenChanges(before, ReadGlState()), Not(IsEmpty()));
  }
  GlState after = ReadGlState();
  for (const char* kept : {"GL_VIEWPORT", "GL_SCISSOR_BOX"}) after[kept] = before.at(kept);
  EXPECT_EQ(after, before);
}

TEST_F(GlWatch, EachChangeOfStateIsForbidden) {
  GLuint texture = 0;
  GLuint framebuffer = 0;
  GLuint buffer = 0;
  glGenTextures(1, &texture);
  glGenFramebuffers(1, &framebuffer);
  glGenBuffers(1, &buffer);
  const std::pair<const char*, std::function<void()>> changes[] = {
      {"GL_BLEND", [] { glEnable(GL_BLEND); }},
      {"GL_DEPTH_TEST", [] { glEnable(GL_DEPTH_TEST); }},
      {"GL_DEPTH_WRITEMASK", [] { glDepthMask(GL_FALSE); }},
      {"GL_SCISSOR_TEST", [] { glEnable(GL_SCISSOR_TEST); }},
      {"GL_CULL_FACE", [] { glEnable(GL_CULL_FACE); }},
      {"GL_COLOR_WRITEMASK", [] { glColorMask(GL_TRUE, GL_FALSE, GL_TRUE, GL_TRUE); }},
      {"GL_COLOR_CLEAR_VALUE", [] { glClearColor(0, 0, 0.5F, 0); }},
      {"GL_VIEWPORT", [] { glViewport(0, 0, 17, 17); }},
      {"GL_PACK_ALIGNMENT", [] { glPixelStorei(GL_PACK_ALIGNMENT, 1); }},
      {"GL_UNPACK_ROW_LENGTH", [] { glPixelStorei(GL_UNPACK_ROW_LENGTH, 5); }},
      {"GL_ACTIVE_TEXTURE", [] { glActiveTexture(GL_TEXTURE3); }},
      {"GL_TEXTURE_BINDING_2D", [&] { glBindTexture(GL_TEXTURE_2D, texture); }},
      {"GL_DRAW_FRAMEBUFFER", [&] { glBindFramebuffer(GL_DRAW_FRAMEBUFFER, framebuffer); }},
      {"GL_READ_FRAMEBUFFER", [&] { glBindFramebuffer(GL_READ_FRAMEBUFFER, framebuffer); }},
      {"GL_ARRAY_BUFFER", [&] { glBindBuffer(GL_ARRAY_BUFFER, buffer); }},
      {"GL_PIXEL_PACK_BUFFER", [&] { glBindBuffer(GL_PIXEL_PACK_BUFFER, buffer); }},
  };
  for (const auto& [what, change] : changes) {
    const GlState before = ReadGlState();
    change();
    const auto found = ForbiddenChanges(before, ReadGlState());
    ASSERT_EQ(found.size(), 1u) << what;
    EXPECT_THAT(found.front(), HasSubstr(what));
  }
}

TEST_F(GlWatch, WhatADrawMayLeaveBehindIsAllowed) {
  const HostileGlState hostile;
  const GlState before = ReadGlState();
  glUseProgram(0);
  glBindFramebuffer(GL_FRAMEBUFFER, 0);
  glBindBuffer(GL_ARRAY_BUFFER, 0);
  glActiveTexture(GL_TEXTURE7);
  glBindTexture(GL_TEXTURE_2D, 0);
  glActiveTexture(GL_TEXTURE0);
  EXPECT_THAT(ForbiddenChanges(before, ReadGlState()), IsEmpty());
  glActiveTexture(GL_TEXTURE8);
  glBindTexture(GL_TEXTURE_2D, 0);
  glActiveTexture(GL_TEXTURE0);
  EXPECT_THAT(ForbiddenChanges(before, ReadGlState()).size(), 1u) << "the ninth unit is the host's";
}

TEST_F(GlWatch, ObjectsOfEveryKindAreCounted) {
  const GlObjects before = CountGlObjects();
  GLuint name = 0;
  glGenTextures(1, &name);
  glBindTexture(GL_TEXTURE_2D, name);
  glGenBuffers(1, &name);
  glBindBuffer(GL_ARRAY_BUFFER, name);
  glGenFramebuffers(1, &name);
  glBindFramebuffer(GL_FRAMEBUFFER, name);
  glCreateProgram();
  glCreateShader(GL_VERTEX_SHADER);
  const GlObjects after = CountGlObjects();
  EXPECT_EQ(after.textures, before.textures + 1);
  EXPECT_EQ(after.buffers, before.buffers + 1);
  EXPECT_EQ(after.framebuffers, before.framebuffers + 1);
  EXPECT_EQ(after.programs, before.programs + 1);
  EXPECT_EQ(after.shaders, before.shaders + 1);
}

TEST_F(GlWatch, ErrorsThatTheCallerTookAreSeen) {
  GlErrors errors;
  errors.Listen();
  EXPECT_THAT(errors.Take(), IsEmpty());
  glEnable(GL_NONE);
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_INVALID_ENUM));
  EXPECT_EQ(errors.Take().size(), 1u);
  EXPECT_THAT(errors.Take(), IsEmpty());
  glDebugMessageCallback(nullptr, nullptr);
}

class Children : public ::testing::Test {
 protected:
  ChildEnd Run(std::vector<std::string> arguments, const char* program = KRV_PROGRAM) {
    return host::platform::RunChild({.program = program,
                                     .arguments = std::move(arguments),
                                     .output = folder_.path() / "output",
                                     .limit = std::chrono::minutes(1)});
  }
  test::ScratchFolder folder_;
};

TEST_F(Children, EndWithTheirCode) {
  EXPECT_EQ(Run({"--version"}).kind, ChildEnd::Kind::kEnded);
  EXPECT_EQ(Run({"--version"}).code, 0);
  EXPECT_EQ(Run({"a \"quoted\\\" word"}).code, 2);
  EXPECT_GT(std::filesystem::file_size(folder_.path() / "output"), 0u);
}

TEST_F(Children, ThatAreNoneAreNotStarted) {
  const ChildEnd end = Run({}, KRV_PACKAGE);
  EXPECT_EQ(end.kind, ChildEnd::Kind::kNotStarted);
  EXPECT_NE(end.reason, "");
}

}  // namespace
}  // namespace krv::tool
