// Every input of the corpora, past findings included, fed once more.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "fuzz/targets.h"

namespace krv::fuzz {

// What a failure names.
void PrintTo(const Target& target, std::ostream* out) { *out << target.name; }

namespace {

class Corpus : public testing::TestWithParam<Target> {};

TEST_P(Corpus, IsReadWithoutABrokenPromise) {
  const Target& target = GetParam();
  size_t inputs = 0;
  const auto folder = std::filesystem::path(KRV_FUZZ_CORPUS) / target.name;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    ASSERT_TRUE(file.good() || file.eof()) << entry.path();
    target.feed(bytes);
    for (size_t cut = 0; cut < bytes.size(); cut += 1 + bytes.size() / 32) {
      target.feed(std::string_view(bytes).substr(0, cut));
    }
    ++inputs;
  }
  EXPECT_GE(inputs, 5u) << "in " << folder;
}

INSTANTIATE_TEST_SUITE_P(Fuzz, Corpus, testing::ValuesIn(kTargets),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace krv::fuzz
