// Where an effect's programs come from, and what happens when they cannot be had.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "effects/effect_fixture.h"
#include "effects/package_cipher.h"
#include "support/file_system.h"

namespace krv::test {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

constexpr char kBuiltin[] = "audio_visualization_geometry.frag";
const Values kRed = {1, 0, 0, 1};

std::string Red() { return Fragment("gl_FragColor = vec4(1.0, 0.0, 0.0, 1.0);"); }
std::string Blue() { return Fragment("gl_FragColor = vec4(0.0, 0.0, 1.0, 1.0);"); }

// A quad over the left half of the target.
constexpr char kLeftHalf[] =
    "#version 120\nattribute vec2 position;\n"
    "void main() { gl_Position = vec4(position.x - 1.0, 2.0 * position.y - 1.0, 0.0, 1.0); }\n";

class Programs : public EffectTest {
 protected:
  // A package in `original` mode with one fragment entry.
  static Package Entry(const std::string& entry) {
    Package package;
    package.description = {{"opengl_frag", {entry}}, {"original", true}};
    return package;
  }

  int32_t InitializeNew(Package package) {
    const Instance effect = host_.Create(host_.Register(std::move(package)));
    const int32_t code = effect->Initialize(&context_);
    errors_ = host_.TakeErrors();
    return code;
  }

  std::string PathOf(const std::string& entry) const {
    return host_.folder().text() + '\\' + entry;
  }

  std::vector<std::string> errors_;
};

TEST_F(Programs, EntryAfterABackslashIsLookedUpUnderItsFileNameAlone) {
  EXPECT_EQ(InitializeNew(Entry(std::string("no_such_folder\\") + kBuiltin)), kOk);
}

TEST_F(Programs, EntryWithAForwardSlashIsLookedUpWhole) {
  const std::string entry = std::string("no_such_folder/") + kBuiltin;
  EXPECT_EQ(InitializeNew(Entry(entry)), kFailed);
  EXPECT_THAT(errors_, ElementsAre("<audio_visual> Decode file error : " + PathOf(entry)));
}

TEST_F(Programs, EntryWithAForwardSlashIsReadFromItsFile) {
  Package package = Entry(std::string("folder/") + kBuiltin);
  package.files[std::string("folder/") + kBuiltin] = Red();
  EXPECT_EQ(Shown(*host_.Make(package)), kRed);
}

TEST_F(Programs, FilesOfAnyNameAreReadFromFoldersOfAnyNameAndDepth) {
  Package package = Entry("Größe 音\\pass one.glsl");
  package.folder = AwkwardFolder();
  package.files["Größe 音/pass one.glsl"] = Red();
  EXPECT_EQ(Shown(*host_.Make(package)), kRed);

  package.description["ENCRYPT"] = "1";
  package.files["Größe 音/pass one.glsl"] = Encipher(Red());
  package.description.erase("unique_name");
  EXPECT_EQ(Shown(*host_.Make(package)), kRed);
}

TEST_F(Programs, CatalogueComesBeforeAFileOfTheSameName) {
  Package package = Entry(kBuiltin);
  package.files[kBuiltin] = Red();
  EXPECT_NE(Shown(*host_.Make(package)), kRed);
}

TEST_F(Programs, VersionMakesEveryEntryAFile) {
  Package package = Entry(kBuiltin);
  package.description["version"] = "1.0";
  EXPECT_EQ(InitializeNew(package), kFailed);
  EXPECT_THAT(errors_, ElementsAre("<audio_visual> Decode file error : " + PathOf(kBuiltin)));

  package.files[kBuiltin] = Red();
  EXPECT_EQ(Shown(*host_.Make(package)), kRed);
}

TEST_F(Programs, EmptyVersionIsNoVersion) {
  Package package = Entry(kBuiltin);
  package.description["version"] = "";
  EXPECT_EQ(InitializeNew(package), kOk);
}

TEST_F(Programs, AnyMissingFragmentFileFailsInitialise) {
  Package package = PassPackage({Red()});
  package.description["opengl_frag"].push_back("missing.glsl");
  EXPECT_EQ(InitializeNew(package), kFailed);
  EXPECT_THAT(errors_, ElementsAre("<audio_visual> Decode file error : " + PathOf("missing.glsl")));
}

TEST_F(Programs, MissingBlendScriptFailsInitialise) {
  for (const char* script : {"missing.glsl", "folder\\"}) {
    Package package = PassPackage({Red()});
    package.description["blend_script"] = script;
    EXPECT_EQ(InitializeNew(package), kFailed) << script;
    EXPECT_THAT(errors_, ElementsAre("<audio_visual> Decode blend file error : " + PathOf(script)));
  }
}

TEST_F(Programs, BlendScriptIsLoadedBeforeTheFragmentFiles) {
  Package package = Entry("missing.glsl");
  package.description["blend_script"] = "missing too.glsl";
  EXPECT_EQ(InitializeNew(package), kFailed);
  EXPECT_THAT(errors_, ElementsAre(StartsWith("<audio_visual> Decode blend file error : ")));
}

TEST_F(Programs, MissingVertexShaderFailsInitialise) {
  Package package = PassPackage({Red()});
  package.description["opengl_vert"] = {"missing.vert"};
  EXPECT_EQ(InitializeNew(package), kFailed);
  EXPECT_THAT(errors_, ElementsAre("<audio_visual> Decode file error : " + PathOf("missing.vert")));
}

TEST_F(Programs, OnlyTheFirstVertexShaderIsRead) {
  Package package = PassPackage({Red()});
  package.description["opengl_vert"] = {"half.vert", "missing.vert"};
  package.files["half.vert"] = kLeftHalf;
  EXPECT_EQ(InitializeNew(package), kOk);
}

TEST_F(Programs, PassesUseTheVertexShaderOfThePackage) {
  Package package = PassPackage({Red()});
  package.description["opengl_vert"] = {"half.vert"};
  package.description["original"] = true;
  package.files["half.vert"] = kLeftHalf;
  EXPECT_EQ(Shown(*host_.Make(package)), kRed);
  EXPECT_EQ(ValuesAt(output_, 3, 3), (Values{0, 1, 0, 0})) << "not the colour of a cleared target";
}

TEST_F(Programs, BlendUsesTheVertexShaderOfThePackage) {
  FillValues(input_, {0.25, 0.25, 0.25, 1});
  Package package = PassPackage({Fragment("gl_FragColor = vec4(0.0);")});
  package.description["opengl_vert"] = {"half.vert"};
  package.files["half.vert"] = kLeftHalf;
  EXPECT_EQ(Shown(*host_.Make(package)), (Values{0.25, 0.25, 0.25, 1}));
  EXPECT_EQ(ValuesAt(output_, 3, 3), (Values{0, 1, 0, 0})) << "the blend drew beyond the quad";
}

TEST_F(Programs, SecondInitialiseBuildsNothing) {
  Package package = Entry("pass.glsl");
  package.files["pass.glsl"] = Red();
  const Instance effect = host_.Make(package);
  host_.folder().Write("pass.glsl", Blue());
  EXPECT_EQ(effect->Initialize(&context_), kOk);
  EXPECT_EQ(Shown(*effect), kRed);
}

TEST_F(Programs, ReleaseAndInitialiseRebuildEveryProgram) {
  Package package = PassPackage({Fragment("gl_FragColor = vec4(0.0);"), Red()});
  package.description["blend_script"] = "blend.glsl";
  package.description["opengl_vert"] = {"all.vert"};
  package.files["blend.glsl"] = Fragment("gl_FragColor = texture2D(effect_tex, vec2(0.25));",
                                         "uniform sampler2D effect_tex;");
  package.files["all.vert"] = kLeftHalf;
  const Instance effect = host_.Make(package);
  EXPECT_EQ(Shown(*effect), kRed);

  host_.folder().Write("pass1.glsl", Blue());
  host_.folder().Write(
      "blend.glsl",
      Fragment("gl_FragColor = texture2D(effect_tex, vec2(0.25)) * vec4(1.0, 1.0, 0.5, "
               "1.0);",
               "uniform sampler2D effect_tex;"));
  EXPECT_EQ(effect->ReleaseResources(), kOk);
  EXPECT_EQ(effect->Initialize(&context_), kOk);
  EXPECT_EQ(Shown(*effect), (Values{0, 0, 0.5, 1}));
}

TEST_F(Programs, FailedInitialiseIsTriedAgainOnceTheFileIsMended) {
  const Instance effect = host_.Create(host_.Register(Entry("late.glsl")));
  EXPECT_EQ(effect->Initialize(&context_), kFailed);
  EXPECT_EQ(effect->Initialize(&context_), kFailed);
  EXPECT_EQ(ProcessFrame(*effect, context_), kFailed);
  host_.folder().Write("late.glsl", Red());
  EXPECT_EQ(effect->Initialize(&context_), kOk);
  EXPECT_EQ(Shown(*effect), kRed);
}

TEST_F(Programs, InitialiseFailsWithoutACurrentContextAndSucceedsWithOne) {
  const Instance effect = host_.Create(host_.Register(PassPackage({Red()})));
  host_.gl().ClearCurrent();
  EXPECT_EQ(effect->Initialize(&context_), kFailed);
  ASSERT_TRUE(host_.gl().MakeCurrent());
  EXPECT_EQ(effect->Initialize(&context_), kOk);
}

TEST_F(Programs, EncipheredPackageDraws) {
  Package package = PassPackage({Encipher(Red())});
  package.description["ENCRYPT"] = "1";
  package.description["opengl_vert"] = {"half.vert"};
  package.description["blend_script"] = "blend.glsl";
  package.files["half.vert"] = Encipher(kLeftHalf);
  package.files["blend.glsl"] = Encipher(Fragment(
      "gl_FragColor = texture2D(effect_tex, vec2(0.25)) * 0.5;", "uniform sampler2D effect_tex;"));
  EXPECT_EQ(Shown(*host_.Make(package)), (Values{0.5, 0, 0, 0.5}));
  EXPECT_EQ(ValuesAt(output_, 3, 0), (Values{0, 1, 0, 0}));
}

TEST_F(Programs, DamagedEncipheredFileFailsInitialise) {
  std::string damaged = Encipher(Red());
  damaged.back() ^= 1;
  Package package = PassPackage({damaged});
  package.description["ENCRYPT"] = "1";
  EXPECT_EQ(InitializeNew(package), kFailed);
  EXPECT_THAT(errors_, ElementsAre("<audio_visual> Decode file error : " + PathOf("pass0.glsl")));

  package = PassPackage({Encipher(Red())});
  package.description["ENCRYPT"] = "1";
  package.description["blend_script"] = "blend.glsl";
  package.files["blend.glsl"] = damaged;
  EXPECT_EQ(InitializeNew(package), kFailed);
  EXPECT_THAT(errors_,
              ElementsAre("<audio_visual> Decode blend file error : " + PathOf("blend.glsl")));
}

TEST_F(Programs, PlainFileInAnEncipheredPackageFailsInitialise) {
  Package package = PassPackage({Red()});
  package.description["ENCRYPT"] = "1";
  EXPECT_EQ(InitializeNew(package), kFailed);
  EXPECT_THAT(errors_, ElementsAre("<audio_visual> Decode file error : " + PathOf("pass0.glsl")));
}

TEST_F(Programs, ShaderThatDoesNotCompileIsPrintedAndDrawsNothing) {
  testing::internal::CaptureStdout();
  const Instance broken = host_.Make(PassPackage({Fragment("this is no GLSL;")}));
  FillValues(input_, {0.25, 0.5, 0.75, 1});
  EXPECT_EQ(Shown(*broken), (Values{0.25, 0.5, 0.75, 1}));
  EXPECT_THAT(testing::internal::GetCapturedStdout(),
              testing::HasSubstr("Shader compiler failed (frag) : "));
  Package package = PassPackage({Red()});
  package.description["original"] = true;
  EXPECT_EQ(Shown(*host_.Make(package)), kRed);
}

}  // namespace
}  // namespace krv::test
