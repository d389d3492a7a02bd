// The built library's file on Windows.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <string>

#include "boundary/built_library.h"
#include "support/file_system.h"
#include "support/pe_file.h"

namespace krv::test {
namespace {

using ::testing::AnyOf;
using ::testing::Each;
using ::testing::Not;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;

TEST(BuiltPeFile, ExportsSixFunctionsByPlainNamesAndNothingElse) {
  EXPECT_THAT(
      ReadPeFile(BuiltLibrary::Path()).exports,
      UnorderedElementsAre("StartupKRV", "ShutdownKRV", "RegisterKRVEffect",
                           "RegisterKRVEffectFromConfPath", "CreateKRVEffect", "ReleaseKRVEffect"));
}

TEST(BuiltPeFile, NeedsNothingButWindows) {
  EXPECT_THAT(ReadPeFile(BuiltLibrary::Path()).libraries,
              Each(AnyOf("advapi32.dll", "kernel32.dll", "msvcrt.dll", "user32.dll")));
}

TEST(BuiltPeFile, HoldsNoSymbolsAndNoDebuggingInformation) {
  const PeFile file = ReadPeFile(BuiltLibrary::Path());
  EXPECT_EQ(file.symbols, 0U);
  // Long names of sections stand elsewhere; here they are a number behind a slash.
  EXPECT_THAT(file.sections, Each(Not(StartsWith("/"))));
}

TEST(BuiltPeFile, SaysItsVersion) {
  const std::wstring path = Utf8Path(BuiltLibrary::Path()).wstring();
  const HMODULE file = LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
  ASSERT_NE(file, nullptr);
  const HRSRC found = FindResourceW(file, MAKEINTRESOURCEW(VS_VERSION_INFO),
                                    MAKEINTRESOURCEW(16));  // RT_VERSION
  ASSERT_NE(found, nullptr);
  // A length, a length, a type and the name "VS_VERSION_INFO" stand before the fixed part.
  constexpr size_t kFixedPart = 40;
  VS_FIXEDFILEINFO info;
  ASSERT_GE(SizeofResource(file, found), kFixedPart + sizeof(info));
  std::memcpy(&info, static_cast<const char*>(LockResource(LoadResource(file, found))) + kFixedPart,
              sizeof(info));
  EXPECT_EQ(info.dwSignature, 0xFEEF04BDU);
  EXPECT_EQ(std::to_string(HIWORD(info.dwFileVersionMS)) + "." +
                std::to_string(LOWORD(info.dwFileVersionMS)) + "." +
                std::to_string(HIWORD(info.dwFileVersionLS)),
            KRV_VERSION);
  FreeLibrary(file);
}

}  // namespace
}  // namespace krv::test
