// docs/architecture.md against the tree: its folders, who includes whom, the folders of tests.
#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <sstream>

#include "guides/guide_text.h"

namespace krv::test {
namespace {

namespace fs = std::filesystem;

using Names = std::set<std::string>;

const fs::path kRoot = KRV_SOURCES;

Guide ArchitectureGuide() { return Guide(kRoot / "docs" / "architecture.md"); }

// The folders in the guide's first block: "host/" and, below it, "  media/".
Names FoldersInGuide() {
  const Guide guide = ArchitectureGuide();
  std::istringstream tree(guide.blocks().at(0).text);
  Names folders;
  std::string above;
  for (std::string line; std::getline(tree, line);) {
    const size_t begin = line.find_first_not_of(' ');
    if (begin > 2) continue;  // goes on with the line before
    const std::string name = line.substr(begin, line.find(' ', begin) - begin);
    if (begin == 0) above = name;
    folders.insert(begin == 0 ? name : above + name);
  }
  return folders;
}

// The folders in a folder, without what is built and what is hidden.
Names FoldersIn(const std::string& folder) {
  Names folders;
  for (const auto& entry : fs::directory_iterator(kRoot / folder)) {
    const std::string name = entry.path().filename().string();
    if (entry.is_directory() && !name.starts_with('.') && name != "build") {
      folders.insert(folder + name + "/");
    }
  }
  return folders;
}

// The table under "| Folder | `title` |", by its first cells.
std::map<std::string, std::string> TableOf(const std::string& title) {
  const Guide guide = ArchitectureGuide();
  std::map<std::string, std::string> table;
  bool inside = false;
  for (const auto& cells : guide.rows()) {
    if (cells.size() != 2) continue;
    if (cells[0] == "Folder") {
      inside = cells[1] == title;
    } else if (inside && cells[0].starts_with('`')) {
      table.emplace(cells[0].substr(1, cells[0].size() - 2), cells[1]);
    }
  }
  return table;
}

// What the sources of a folder of the plug-in include from others, as the guide writes it.
std::string IncludesOf(const std::string& folder) {
  const fs::path plugin = kRoot / "plugins" / "krvAudioVisualPlugin";
  Names folders;
  for (const auto& entry : fs::recursive_directory_iterator(plugin / folder)) {
    std::ifstream source(entry.path());
    for (std::string line; entry.is_regular_file() && std::getline(source, line);) {
      constexpr std::string_view kInclude = "#include \"";
      if (!line.starts_with(kInclude)) continue;
      const std::string name = line.substr(kInclude.size());
      const std::string from = name.substr(0, name.find('/')) + "/";
      if (from == "krv/") folders.insert("`include/krv/`");
      if (from != folder && fs::is_directory(plugin / from)) folders.insert("`" + from + "`");
    }
  }
  std::string text;
  for (const std::string& name : folders) text += (text.empty() ? "" : ", ") + name;
  return text;
}

TEST(ArchitectureGuide, NamesFoldersThatAreThere) {
  const Names folders = FoldersInGuide();
  EXPECT_GT(folders.size(), 30u);
  for (const std::string& folder : folders) EXPECT_TRUE(fs::is_directory(kRoot / folder)) << folder;
}

TEST(ArchitectureGuide, LeavesNoFolderOut) {
  const Names named = FoldersInGuide();
  Names there = {"include/krv/", "examples/host/"};
  for (const char* folder :
       {"", "plugins/", "plugins/krvAudioVisualPlugin/", "host/", "tools/", "tools/krv/"}) {
    there.merge(FoldersIn(folder));
  }
  for (const char* holds_others : {"include/", "examples/", "plugins/", "tools/"}) {
    there.erase(holds_others);
  }
  for (const std::string& folder : there) EXPECT_TRUE(named.contains(folder)) << folder;
}

TEST(ArchitectureGuide, SaysWhoIncludesWhom) {
  const auto table = TableOf("Includes from");
  const Names folders = FoldersIn("plugins/krvAudioVisualPlugin/");
  EXPECT_EQ(table.size(), folders.size());
  for (const auto& [folder, includes] : table) EXPECT_EQ(includes, IncludesOf(folder)) << folder;
}

// A folder of tests is named, or has the name of the folder that it tests.
TEST(ArchitectureGuide, SaysWhatTheFoldersOfTestsHold) {
  const auto table = TableOf("What it holds");
  const Names tested = FoldersInGuide();
  for (const auto& [folder, holds] : table) {
    EXPECT_TRUE(fs::is_directory(kRoot / "tests" / folder)) << folder;
  }
  for (const std::string& folder : FoldersIn("tests/")) {
    const std::string name = folder.substr(folder.find('/') + 1);
    const bool obvious =
        std::any_of(tested.begin(), tested.end(),
                    [&name](const std::string& other) { return other.ends_with("/" + name); });
    EXPECT_TRUE(obvious || table.contains(name) || name == "host/" || name == "ai_filter/")
        << folder;
  }
}

}  // namespace
}  // namespace krv::test
