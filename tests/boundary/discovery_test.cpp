#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "boundary/boundary_fixture.h"
#include "support/file_system.h"

namespace krv::test {
namespace {

namespace fs = std::filesystem;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class Discovery : public BoundaryTest {
 protected:
  // The unique name that the registrar was told last.
  std::string AnnouncedName() const {
    for (auto call = registrar_.calls.rbegin(); call != registrar_.calls.rend(); ++call) {
      if (call->starts_with("0: \"")) return call->substr(4, call->find('"', 4) - 4);
    }
    return {};
  }

  // The sub-folders of `folder` in the order in which the platform lists them.
  static std::vector<fs::path> Listed(const fs::path& folder) {
    std::vector<fs::path> result;
    for (const auto& entry : fs::directory_iterator(folder)) result.push_back(entry.path());
    return result;
  }

  // Three packages side by side. Their folders come in the order of the walk, and the packages are
  // named "first", "second" and "third" in that order.
  std::vector<fs::path> WriteThreePackages() {
    for (const char* folder : {"a", "b", "c"}) fs::create_directory(packages_.path() / folder);
    const std::vector<fs::path> folders = Listed(packages_.path());
    const char* names[] = {"first", "second", "third"};
    for (size_t i = 0; i < 3; ++i) WritePackage(folders[i], PackageText(Unique(names[i])));
    return folders;
  }

  // As the walk spells the path.
  std::string DescriptionPath(const std::string& package) const {
    return packages_.text() + '/' + package + "/description.json";
  }

  std::string ExpectedLogLine(const std::string& name, const std::string& path) const {
    return "<audio_visual> Register Effect [" + name + "] from path : " + path + "\n";
  }
};

TEST_F(Discovery, LogsTheAnnouncedEffectAndThePathAsGiven) {
  WritePackage("package", PackageText(Unique("effect")));
  const std::string path = packages_.text() + "/./";
  ASSERT_EQ(Register(path), 0);
  ASSERT_THAT(host_.log, SizeIs(1));
  EXPECT_EQ(host_.log[0].level, 1);
  EXPECT_EQ(host_.log[0].format, "<audio_visual> Register Effect [%s] from path : %s\n");
  EXPECT_EQ(host_.log[0].text, ExpectedLogLine(Unique("effect"), path));
}

TEST_F(Discovery, WithoutALogItRegistersAllTheSame) {
  host_.missing_suites = {"Host Util Suite"};
  StartUp();
  WritePackage("package", PackageText(Unique("effect")));
  EXPECT_EQ(Register(), 0);
  EXPECT_TRUE(CanCreate(Unique("effect")));
  EXPECT_THAT(host_.log, IsEmpty());
}

TEST_F(Discovery, MissingPathFindsNothing) {
  EXPECT_EQ(Register(packages_.text() + "/none"), 2);
  EXPECT_THAT(host_.log, IsEmpty());
  EXPECT_THAT(registrar_.calls, IsEmpty());
}

TEST_F(Discovery, EmptyPathFindsNothing) {
  EXPECT_EQ(Register(""), 2);
  EXPECT_THAT(registrar_.calls, IsEmpty());
}

TEST_F(Discovery, FolderWithoutDescriptionsFindsNothing) {
  packages_.Write("package/readme.txt", "nothing here");
  EXPECT_EQ(Register(), 2);
  EXPECT_THAT(host_.log, IsEmpty());
  EXPECT_THAT(registrar_.calls, IsEmpty());
}

TEST_F(Discovery, PathOfAFileFindsNothing) {
  const auto file = WritePackage("package", PackageText(Unique("effect")));
  EXPECT_EQ(Register(file.string()), 2);
  EXPECT_FALSE(CanCreate(Unique("effect")));
}

TEST_F(Discovery, NullArgumentsFindNothing) {
  WritePackage("package", PackageText(Unique("effect")));
  EXPECT_EQ(library_.register_from_path(nullptr, registrar_.object()), 2);
  EXPECT_EQ(library_.register_from_path(packages_.text().c_str(), nullptr), 2);
  EXPECT_THAT(host_.log, IsEmpty());
  EXPECT_FALSE(CanCreate(Unique("effect")));
}

TEST_F(Discovery, PackagesAtEveryDepthAreRegistered) {
  WritePackage(".", PackageText(Unique("top")));
  WritePackage("one", PackageText(Unique("one")));
  WritePackage("one/two/three", PackageText(Unique("three")));
  WritePackage("other/two", PackageText(Unique("two")));
  const uint32_t before = EffectCount();
  ASSERT_EQ(Register(), 0);
  EXPECT_EQ(EffectCount(), before + 4);
  for (const char* name : {"top", "one", "two", "three"}) EXPECT_TRUE(CanCreate(Unique(name)));
}

TEST_F(Discovery, LastPackageOfTheWalkIsAnnouncedAlone) {
  WriteThreePackages();
  ASSERT_EQ(Register(), 0);
  EXPECT_EQ(AnnouncedName(), Unique("third"));
  EXPECT_THAT(registrar_.calls, SizeIs(3));
  EXPECT_THAT(host_.log, SizeIs(1));
}

TEST_F(Discovery, IndicesFollowTheWalk) {
  const uint32_t first = EffectCount();
  WriteThreePackages();
  ASSERT_EQ(Register(), 0);
  const char* names[] = {"first", "second", "third"};
  for (uint32_t i = 0; i < 3; ++i) {
    ASSERT_EQ(library_.register_effect(first + i, registrar_.object()), 0);
    EXPECT_EQ(AnnouncedName(), Unique(names[i]));
  }
}

TEST_F(Discovery, FileWithACapitalFirstLetterIsNotTaken) {
  packages_.Write("package/Description.json", PackageText(Unique("effect")));
  packages_.Write("package/description.json.bak", PackageText(Unique("effect")));
  EXPECT_EQ(Register(), 2);
  EXPECT_FALSE(CanCreate(Unique("effect")));
}

TEST_F(Discovery, FolderNamedLikeADescriptionIsEnteredAndNotRead) {
  WritePackage("description.json", PackageText(Unique("effect")));
  EXPECT_EQ(Register(), 0);
  EXPECT_TRUE(CanCreate(Unique("effect")));
}

TEST_F(Discovery, FirstOfTwoPackagesWithOneNameStaysAndIsAnnounced) {
  const auto folders = WriteThreePackages();
  const auto parameter = [](int value) {
    return R"({"name": "a", "type": 3, "default_value": )" + std::to_string(value) + "}";
  };
  WritePackage(folders[0], PackageText(Unique("same"), parameter(1)));
  WritePackage(folders[2], PackageText(Unique("same"), parameter(3)));
  const uint32_t before = EffectCount();
  ASSERT_EQ(Register(), 0);
  EXPECT_EQ(EffectCount(), before + 2);
  EXPECT_EQ(AnnouncedName(), Unique("same"));
  EXPECT_EQ(registrar_.calls.back(), R"(5: -1 0 "a" "a" 0 0 1 1 0)");
}

TEST_F(Discovery, SecondCallRegistersNothingNewAndAnnouncesAgain) {
  WriteThreePackages();
  ASSERT_EQ(Register(), 0);
  const auto first = registrar_.calls;
  const uint32_t count = EffectCount();
  registrar_.calls.clear();
  ASSERT_EQ(Register(), 0);
  EXPECT_EQ(EffectCount(), count);
  EXPECT_EQ(registrar_.calls, first);
}

TEST_F(Discovery, RejectedPackagesAreSkippedSilently) {
  const auto folders = WriteThreePackages();
  packages_.Write(folders[1] / "description.json", R"({"effect_type": "Audio_Visualization"})");
  packages_.Write(folders[2] / "description.json", "{}");
  ASSERT_EQ(Register(), 0);
  EXPECT_EQ(AnnouncedName(), Unique("first"));
  EXPECT_THAT(host_.log, SizeIs(1));
}

TEST_F(Discovery, FolderOfRejectedPackagesFindsNothing) {
  packages_.Write("package/description.json", R"({"unique_name": "x", "params": []})");
  EXPECT_EQ(Register(), 2);
  EXPECT_THAT(host_.log, IsEmpty());
}

TEST_F(Discovery, FolderNamesWithSpacesPercentSignsAndOtherScripts) {
  const auto file =
      WritePackage(Utf8Path("50 %s %n/Größe 音楽/пакет"), PackageText(Unique("effect")));
  const std::string path = Utf8Text(file.parent_path().parent_path());
  ASSERT_EQ(Register(path), 0);
  ASSERT_THAT(host_.log, SizeIs(1));
  EXPECT_EQ(host_.log[0].text, ExpectedLogLine(Unique("effect"), path));
  EXPECT_TRUE(CanCreate(Unique("effect")));
}

TEST_F(Discovery, PathsMayBeLongerThan260Characters) {
  WritePackage(AwkwardFolder() / "package", PackageText(Unique("effect")));
  ASSERT_EQ(Register(), 0) << "below the path";
  EXPECT_TRUE(CanCreate(Unique("effect")));
  WritePackage(AwkwardFolder() / "package", PackageText(Unique("again")));
  ASSERT_EQ(Register(Utf8Text(packages_.path() / AwkwardFolder())), 0) << "the path itself";
  EXPECT_TRUE(CanCreate(Unique("again")));
}

TEST_F(Discovery, BackslashesSeparateFoldersToo) {
  WritePackage("one/two", PackageText(Unique("effect")));
  EXPECT_EQ(Register(packages_.text() + "\\one\\two"), 0);
  EXPECT_TRUE(CanCreate(Unique("effect")));
}

TEST_F(Discovery, NamesDifferByLetterCase) {
  WritePackage("package", PackageText(Unique("effect")));
  ASSERT_EQ(Register(), 0);
  EXPECT_FALSE(CanCreate(Unique("Effect")));
}

TEST_F(Discovery, InvalidJsonEndsTheCallWithTheParsersErrorAndKeepsWhatCameBefore) {
  const auto folders = WriteThreePackages();
  const std::string text = R"({"effect_type": "audio_visualization", "a": "100 %s %n" oops)";
  std::string parse_error;
  try {
    ADD_FAILURE() << nlohmann::json::parse(text);
  } catch (const nlohmann::json::exception& error) {
    parse_error = error.what();
  }
  ASSERT_THAT(parse_error, ::testing::HasSubstr("%s %n"));
  packages_.Write(folders[1] / "description.json", text);

  EXPECT_EQ(Register(), 4);

  ASSERT_THAT(host_.log, SizeIs(1));
  EXPECT_EQ(host_.log[0].level, 4);
  EXPECT_EQ(host_.log[0].format, "<audio_visual> %s");
  EXPECT_EQ(
      host_.log[0].text,
      "<audio_visual> " + DescriptionPath(Utf8Text(folders[1].filename())) + ": " + parse_error);
  EXPECT_THAT(registrar_.calls, IsEmpty());
  EXPECT_TRUE(CanCreate(Unique("first")));
  EXPECT_FALSE(CanCreate(Unique("third")));

  fs::remove(folders[1] / "description.json");
  EXPECT_EQ(Register(), 0) << "the library works on after an error";
  EXPECT_TRUE(CanCreate(Unique("third")));
}

TEST_F(Discovery, WronglyTypedParameterEndsTheCallWithTheLibrarysError) {
  WritePackage("package", PackageText(Unique("effect"),
                                      R"({"name": "a", "type": 5, "default_value": "fast"})"));
  EXPECT_EQ(Register(), 4);
  ASSERT_THAT(host_.log, SizeIs(1));
  EXPECT_EQ(host_.log[0].level, 4);
  EXPECT_THAT(host_.log[0].text, ::testing::HasSubstr("type must be number, but is string"));
  EXPECT_FALSE(CanCreate(Unique("effect")));
}

TEST_F(Discovery, DescriptionBeyondALimitEndsTheCallWithTheFileAndTheReason) {
  WritePackage("package", std::string(100'000, '['));
  EXPECT_EQ(Register(), 4);
  ASSERT_THAT(host_.log, SizeIs(1));
  EXPECT_EQ(host_.log[0].text, "<audio_visual> " + DescriptionPath("package") +
                                   ": lists and objects lie in one another more than 64 deep");
}

TEST_F(Discovery, ErrorOfTheWalkKeepsWhatWasFoundBefore) {
  const auto folders = WriteThreePackages();
  fs::remove(folders[1] / "description.json");
  const auto unlistable = MakeUnlistable(folders[1]);
  EXPECT_EQ(Register(), 0);
  EXPECT_EQ(AnnouncedName(), Unique("first"));
  EXPECT_TRUE(CanCreate(Unique("first")));
  EXPECT_FALSE(CanCreate(Unique("third")));
}

}  // namespace
}  // namespace krv::test
