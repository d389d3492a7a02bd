#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "boundary/built_library.h"
#include "support/elf_symbols.h"

namespace krv::test {
namespace {

using ::testing::UnorderedElementsAre;

TEST(BuiltElfFile, ExportsSixFunctionsAndNothingElse) {
  std::vector<std::string> names;
  for (const ElfSymbol& symbol : DefinedSymbols(BuiltLibrary::Path(), ElfTable::kExported)) {
    names.push_back(symbol.name);
  }
  EXPECT_THAT(names, UnorderedElementsAre("StartupKRV", "ShutdownKRV", "RegisterKRVEffect",
                                          "RegisterKRVEffectFromConfPath", "CreateKRVEffect",
                                          "ReleaseKRVEffect"));
}

TEST(BuiltElfFile, EffectTablesHaveSeventeenSlots) {
  // Two words stand before the slots: the offset to the top, and the type.
  constexpr uint64_t kTableSize = (2 + 17) * sizeof(void*);
  std::map<std::string, uint64_t> sizes;
  for (const ElfSymbol& symbol : DefinedSymbols(BuiltLibrary::Path(), ElfTable::kAll)) {
    sizes[symbol.name] = symbol.size;
  }
  EXPECT_EQ(sizes["_ZTVN3krv14KRVAudioVisualE"], kTableSize);
  EXPECT_EQ(sizes["_ZTVN3krv24KRVAudioVisual3dGeometryE"], kTableSize);
  EXPECT_EQ(sizes["_ZTVN3krv23KRVAudioVisualMaskShapeE"], kTableSize);
}

}  // namespace
}  // namespace krv::test
