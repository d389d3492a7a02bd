// The parts of a guide in Markdown that tests look at.
#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace krv::test {

// A block of code between two lines of three backticks.
struct GuideBlock {
  std::string language;  // empty when none is given
  std::string file;      // the NAME of a line "`NAME`:" that it follows; empty without one
  std::string text;
  int line = 0;  // of its first backticks
};

struct GuideLink {
  std::string target;
  int line = 0;
};

class Guide {
 public:
  // Throws when there is no such file.
  explicit Guide(const std::filesystem::path& file);

  const std::filesystem::path& file() const { return file_; }
  const std::vector<GuideBlock>& blocks() const { return blocks_; }
  // Of links and pictures, outside of blocks.
  const std::vector<GuideLink>& links() const { return links_; }
  // What headings are called in links to them.
  const std::set<std::string>& anchors() const { return anchors_; }
  // The cells of every row of every table, without blanks around them.
  const std::vector<std::vector<std::string>>& rows() const { return rows_; }

 private:
  void ReadLine(const std::string& line, int number);

  std::filesystem::path file_;
  std::vector<GuideBlock> blocks_;
  std::vector<GuideLink> links_;
  std::set<std::string> anchors_;
  std::vector<std::vector<std::string>> rows_;
  bool in_block_ = false;
  std::string next_file_;
};

// README.md, CONTRIBUTING.md and the guides in docs/.
std::vector<Guide> AllGuides();

// "docs/shaders.md:12", for failures.
std::string PlaceIn(const Guide& guide, int line);

}  // namespace krv::test
