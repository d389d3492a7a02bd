// What the process of a check tells the one that watches it: a file of lines, each written at once,
// so that everything before a crash is known.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace krv::tool {

// No locks.
class JournalWriter {
 public:
  explicit JournalWriter(const std::filesystem::path& file);

  // What comes next; a crash or a hang is blamed on the last one. `checks`: made until now.
  void Step(int64_t checks, const std::string& what);
  void Failure(const std::string& what);
  void Number(const std::string& name, double value);
  // Written last. A journal without it belongs to a process that has not come to its end.
  void Done(int64_t checks);

 private:
  std::ofstream file_;
};

struct Journal {
  int64_t checks = 0;
  std::string step;  // the last one
  std::vector<std::string> failures;
  std::map<std::string, double> numbers;
  bool complete = false;
};

// A file that is not there gives an empty journal.
Journal ReadJournal(const std::filesystem::path& file);

}  // namespace krv::tool
