#include "guides/guide_text.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <stdexcept>

namespace krv::test {
namespace {

namespace fs = std::filesystem;

std::string Trimmed(const std::string& text) {
  const size_t first = text.find_first_not_of(' ');
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// As the pages that show Markdown name headings: small letters, digits, hyphens for blanks, and
// nothing else.
std::string AnchorOf(const std::string& heading) {
  std::string anchor;
  for (const char c : heading) {
    const auto byte = static_cast<unsigned char>(c);
    if (std::isalnum(byte) != 0 || c == '_' || c == '-') {
      anchor += static_cast<char>(std::tolower(byte));
    } else if (c == ' ') {
      anchor += '-';
    }
  }
  return anchor;
}

// What stands between bars that no backslash precedes and no backticks enclose.
std::vector<std::string> CellsOf(const std::string& line) {
  std::vector<std::string> cells;
  std::string cell;
  for (size_t i = 1; i < line.size(); ++i) {
    if (line[i] == '\\' && i + 1 < line.size()) {
      cell += line[++i];
    } else if (line[i] == '|') {
      cells.push_back(Trimmed(cell));
      cell.clear();
    } else {
      cell += line[i];
    }
  }
  return cells;
}

void FindLinks(const std::string& line, int number, std::vector<GuideLink>* links) {
  size_t at = 0;
  while ((at = line.find("](", at)) != std::string::npos) {
    const size_t end = line.find(')', at);
    if (end == std::string::npos) return;
    links->push_back({line.substr(at + 2, end - at - 2), number});
    at = end;
  }
}

}  // namespace

Guide::Guide(const fs::path& file) : file_(file) {
  std::ifstream text(file);
  if (!text) throw std::runtime_error("there is no guide " + file.string());
  int number = 0;
  for (std::string line; std::getline(text, line);) ReadLine(line, ++number);
  if (in_block_) throw std::runtime_error(PlaceIn(*this, blocks_.back().line) + ": has no end");
}

void Guide::ReadLine(const std::string& line, int number) {
  if (line.starts_with("```")) {
    in_block_ = !in_block_;
    if (in_block_) blocks_.push_back({Trimmed(line.substr(3)), next_file_, "", number});
    next_file_.clear();
    return;
  }
  if (in_block_) {
    blocks_.back().text += line + "\n";
    return;
  }
  if (line.empty()) return;
  const bool names_file = line.starts_with('`') && line.ends_with("`:");
  next_file_ = names_file ? line.substr(1, line.size() - 3) : "";
  if (line.front() == '#') anchors_.insert(AnchorOf(Trimmed(line.substr(line.find(' ')))));
  if (line.front() == '|') rows_.push_back(CellsOf(line));
  FindLinks(line, number, &links_);
}

std::vector<Guide> AllGuides() {
  const fs::path root = KRV_SOURCES;
  std::vector<fs::path> files = {root / "README.md", root / "CONTRIBUTING.md"};
  for (const auto& entry : fs::directory_iterator(root / "docs")) {
    if (entry.path().extension() == ".md") files.push_back(entry.path());
  }
  std::sort(files.begin() + 2, files.end());
  return {files.begin(), files.end()};
}

std::string PlaceIn(const Guide& guide, int line) {
  return guide.file().filename().string() + ":" + std::to_string(line);
}

}  // namespace krv::test
