// The messages in docs/debugging.md are those of krv check.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "guides/guide_text.h"

namespace krv::test {
namespace {

namespace fs = std::filesystem;

// What the sources of krv check say in quotation marks: without the breaks in texts of several
// lines, and without the backslashes.
std::string TextsOfCheck() {
  std::string texts;
  for (const auto& entry : fs::directory_iterator(KRV_SOURCES "/tools/krv/check")) {
    std::ifstream file(entry.path());
    const std::string source{std::istreambuf_iterator<char>(file), {}};
    for (size_t i = 0; i < source.size(); ++i) {
      const size_t next = source.find_first_not_of(" \n", i + 1);
      const bool breaks_text = source[i] == '"' && source[i - 1] != '\\' &&
                               next != std::string::npos && source[next] == '"' &&
                               source.substr(i, next - i).find('\n') != std::string::npos;
      if (breaks_text) {
        i = next;
      } else if (source[i] != '\\') {
        texts += source[i];
      }
    }
  }
  return texts;
}

// What stands between backticks.
std::vector<std::string> QuotedIn(const std::string& cell) {
  std::vector<std::string> quoted;
  for (size_t at = cell.find('`'); at != std::string::npos;) {
    const size_t end = cell.find('`', at + 1);
    quoted.push_back(cell.substr(at + 1, end - at - 1));
    at = cell.find('`', end + 1);
  }
  return quoted;
}

TEST(DebuggingGuide, ListsMessagesThatKrvCheckHas) {
  const std::string texts = TextsOfCheck();
  const Guide guide(KRV_SOURCES "/docs/debugging.md");
  bool inside = false;
  int messages = 0;
  for (const auto& cells : guide.rows()) {
    if (cells.size() != 2) continue;
    if (!cells[0].starts_with('`') && cells[0].find("---") != 0) {
      inside = cells[0] == "Part of the message";
    }
    if (!inside) continue;
    for (const std::string& message : QuotedIn(cells[0])) {
      ++messages;
      EXPECT_NE(texts.find(message), std::string::npos) << message;
    }
  }
  EXPECT_GE(messages, 15);
}

}  // namespace
}  // namespace krv::test
