#include "effects/shader_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>

#include "effects/package_cipher.h"

namespace krv {
namespace {

constexpr std::string_view kSource = "#version 120\nvoid main() { gl_FragColor = vec4(1.0); }\n";

// A folder of the test's own, removed with what is in it.
class ShaderFile : public testing::Test {
 protected:
  void SetUp() override {
    const auto name = "krv_shader_file_" + std::to_string(std::random_device()());
    folder_ = std::filesystem::path(testing::TempDir()) / name;
    std::filesystem::create_directories(folder_);
  }
  void TearDown() override { std::filesystem::remove_all(folder_); }

  // Writes a file, with the folders above it, and returns its path in UTF-8.
  std::string Write(const std::u8string& name, std::string_view contents) const {
    const std::filesystem::path path = folder_ / name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary)
        .write(contents.data(), static_cast<std::streamsize>(contents.size()));
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
  }

  std::optional<std::string> Load(const std::string& path, bool enciphered) const {
    return LoadShaderFile(path, folder_.string(), enciphered);
  }

  // The text of the error that loading raises; empty when it raises none.
  std::string ErrorOf(const std::string& path) const {
    try {
      Load(path, false);
    } catch (const std::runtime_error& error) {
      return error.what();
    }
    return {};
  }

  std::filesystem::path folder_;
};

TEST_F(ShaderFile, PlainFileIsReadWhole) {
  EXPECT_EQ(Load(Write(u8"a.glsl", kSource), false), kSource);
}

TEST_F(ShaderFile, LargeFileIsReadWhole) {
  std::string large;
  while (large.size() < 3'000'000) large += kSource;
  EXPECT_EQ(Load(Write(u8"large.glsl", large), false), large);
  EXPECT_EQ(Load(Write(u8"large.krv", Encipher(large)), true), large);
}

TEST_F(ShaderFile, EncipheredFileGivesItsText) {
  EXPECT_EQ(Load(Write(u8"a.glsl", Encipher(kSource)), true), kSource);
}

TEST_F(ShaderFile, EncipheredFileReadAsPlainStaysEnciphered) {
  const std::string file = Encipher(kSource);
  EXPECT_EQ(Load(Write(u8"a.glsl", file), false), file);
}

TEST_F(ShaderFile, PlainFileOfAnEncipheredPackageFails) {
  EXPECT_EQ(Load(Write(u8"a.glsl", kSource), true), std::nullopt);
  EXPECT_EQ(Load(Write(u8"long.glsl", std::string(1000, ' ')), true), std::nullopt);
}

TEST_F(ShaderFile, DamagedEncipheredFileFails) {
  std::string file = Encipher(kSource);
  file.back() = static_cast<char>(file.back() ^ 1);
  EXPECT_EQ(Load(Write(u8"a.glsl", file), true), std::nullopt);
}

TEST_F(ShaderFile, LineEndsAndZeroBytesAreKept) {
  constexpr std::string_view kMixed("a\r\nb\rc\n\x1a\0\xff\r\n", 11);
  EXPECT_EQ(Load(Write(u8"a.glsl", kMixed), false), kMixed);
  EXPECT_EQ(Load(Write(u8"b.glsl", Encipher(kMixed)), true), kMixed);
}

TEST_F(ShaderFile, MissingFileFails) {
  EXPECT_EQ(Load(folder_.string() + "/missing.glsl", false), std::nullopt);
  EXPECT_EQ(Load(folder_.string() + "/missing.glsl", true), std::nullopt);
  EXPECT_EQ(Load(folder_.string() + "/missing/a.glsl", false), std::nullopt);
  EXPECT_EQ(Load("", false), std::nullopt);
}

TEST_F(ShaderFile, FolderFails) {
  EXPECT_EQ(Load(folder_.string(), false), std::nullopt);
  EXPECT_EQ(Load(folder_.string() + "\\", false), std::nullopt);
}

TEST_F(ShaderFile, EmptyFileFails) {
  EXPECT_EQ(Load(Write(u8"a.glsl", ""), false), std::nullopt);
  EXPECT_EQ(Load(Write(u8"a.glsl", ""), true), std::nullopt);
  EXPECT_EQ(Load(Write(u8"a.glsl", Encipher("")), true), std::nullopt);
}

TEST_F(ShaderFile, BackslashesSeparateFolders) {
  Write(u8"shaders/deep/a.glsl", kSource);
  EXPECT_EQ(Load(folder_.string() + "\\shaders\\deep\\a.glsl", false), kSource);
  EXPECT_EQ(Load(folder_.string() + "\\shaders/deep\\a.glsl", false), kSource);
}

TEST_F(ShaderFile, PathsMayHoldSpacesAndAnyLetters) {
  EXPECT_EQ(Load(Write(u8"Ä effect für 音楽/my shader ♫.glsl", kSource), false), kSource);
}

TEST_F(ShaderFile, FileOfFourMebibytesIsTheLargest) {
  const std::string largest(size_t{4} << 20, ' ');
  EXPECT_EQ(Load(Write(u8"a.glsl", largest), false), largest);
  const std::string path = Write(u8"b.glsl", largest + ' ');
  EXPECT_EQ(ErrorOf(path), path + ": the file is larger than 4194304 bytes");
}

TEST_F(ShaderFile, FileOutsideOfThePackageIsRefused) {
  Write(u8"outside.glsl", kSource);
  Write(u8"package two/a.glsl", kSource);
  Write(u8"package/inside.glsl", kSource);
  const std::string package = folder_.string() + "/package";
  EXPECT_EQ(LoadShaderFile(package + "\\..\\package\\inside.glsl", package, false), kSource);
  for (const char* file : {"\\..\\outside.glsl", "/../outside.glsl", "\\..\\package two\\a.glsl"}) {
    EXPECT_THROW(LoadShaderFile(package + file, package, false), std::runtime_error) << file;
  }
}

TEST_F(ShaderFile, PackageNamedByAWayAroundIsStillItsOwnFolder) {
  Write(u8"package/inside.glsl", kSource);
  const std::string package = folder_.string() + "/package/../package";
  EXPECT_EQ(LoadShaderFile(package + "\\inside.glsl", package, false), kSource);
}

TEST(PackageCipher, TextsComeBack) {
  for (const std::string& text :
       {std::string(), std::string("x"), std::string(kSource), std::string(100'000, '\0')}) {
    EXPECT_EQ(Decipher(Encipher(text)), text) << text.size() << " bytes";
  }
}

TEST(PackageCipher, FileIsItsHeaderAndAsManyBytesAsTheText) {
  const std::string file = Encipher(kSource);
  EXPECT_EQ(file.size(), 45 + kSource.size());
  EXPECT_EQ(file.substr(0, 5), "KRVE\x01");
  EXPECT_EQ(file.find("void main"), std::string::npos);
}

TEST(PackageCipher, SameTextGivesAnotherFileEachTime) {
  EXPECT_NE(Encipher(kSource).substr(45), Encipher(kSource).substr(45));
}

// A file of the first version, made once: packages in the field must stay readable.
TEST(PackageCipher, FileOfVersionOneStaysReadable) {
  constexpr std::string_view kHex =
      "4b52564501704a404e1974e0555b88f687c95481161cd97bd04f8c7aeb6c"
      "7e407626347b5d747abfd2f7d78df7abfd949659a5ab403a00a9103d4908";
  std::string file;
  for (size_t i = 0; i < kHex.size(); i += 2) {
    file.push_back(static_cast<char>(std::stoi(std::string(kHex.substr(i, 2)), nullptr, 16)));
  }
  EXPECT_EQ(Decipher(file), "void main() {}\n");
}

TEST(PackageCipher, EveryChangedByteFails) {
  const std::string file = Encipher(kSource);
  for (size_t i = 0; i < file.size(); ++i) {
    for (const int change : {0x01, 0x80, 0xff}) {
      std::string damaged = file;
      damaged[i] = static_cast<char>(damaged[i] ^ change);
      EXPECT_EQ(Decipher(damaged), std::nullopt) << "byte " << i << ", change " << change;
    }
  }
}

TEST(PackageCipher, EveryShortenedFileFails) {
  const std::string file = Encipher(kSource);
  for (size_t length = 0; length < file.size(); ++length) {
    EXPECT_EQ(Decipher(file.substr(0, length)), std::nullopt) << "length " << length;
  }
}

TEST(PackageCipher, LengthenedFileFails) {
  EXPECT_EQ(Decipher(Encipher(kSource) + '\n'), std::nullopt);
}

TEST(PackageCipher, PlainTextFails) {
  EXPECT_EQ(Decipher(kSource), std::nullopt);
  EXPECT_EQ(Decipher("KRVE"), std::nullopt);
}

}  // namespace
}  // namespace krv
