#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ai_filter/built_filter.h"
#include "support/elf_symbols.h"

namespace krv::test {
namespace {

TEST(AiFilterElfFile, ExportsTwoFunctionsAndNothingElse) {
  std::vector<std::string> names;
  for (const ElfSymbol& symbol : DefinedSymbols(BuiltFilter::Path(), ElfTable::kExported)) {
    names.push_back(symbol.name);
  }
  EXPECT_THAT(names, testing::UnorderedElementsAre("CreateNLEAIEffectFilterFromGUID",
                                                   "NLEEffectFilterTransform"));
}

}  // namespace
}  // namespace krv::test
