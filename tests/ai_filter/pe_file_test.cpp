#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ai_filter/built_filter.h"
#include "support/pe_file.h"

namespace krv::test {
namespace {

using ::testing::AnyOf;
using ::testing::Each;
using ::testing::UnorderedElementsAre;

TEST(AiFilterPeFile, ExportsTwoFunctionsByPlainNamesAndNothingElse) {
  EXPECT_THAT(ReadPeFile(BuiltFilter::Path()).exports,
              UnorderedElementsAre("CreateNLEAIEffectFilterFromGUID", "NLEEffectFilterTransform"));
}

TEST(AiFilterPeFile, NeedsNothingButWindows) {
  EXPECT_THAT(ReadPeFile(BuiltFilter::Path()).libraries,
              Each(AnyOf("advapi32.dll", "kernel32.dll", "msvcrt.dll", "user32.dll")));
}

TEST(AiFilterPeFile, HoldsNoSymbols) { EXPECT_EQ(ReadPeFile(BuiltFilter::Path()).symbols, 0U); }

}  // namespace
}  // namespace krv::test
