#include "validate/journal.h"

#include <algorithm>
#include <sstream>
#include <string_view>

#include "platform/file_system.h"

namespace krv::tool {
namespace {

constexpr std::string_view kStep = "step";
constexpr std::string_view kFailure = "failure";
constexpr std::string_view kNumber = "number";
constexpr std::string_view kDone = "done";

std::string OneLine(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  std::replace(text.begin(), text.end(), '\r', ' ');
  return text;
}

std::string Rest(std::istringstream& line) {
  std::string rest;
  std::getline(line >> std::ws, rest);
  return rest;
}

void ReadLine(const std::string& text, Journal* journal) {
  std::istringstream line(text);
  std::string kind;
  line >> kind;
  if (kind == kStep) {
    line >> journal->checks;
    journal->step = Rest(line);
  } else if (kind == kFailure) {
    journal->failures.push_back(Rest(line));
  } else if (kind == kNumber) {
    std::string name;
    double value = 0;
    if (line >> name >> value) journal->numbers[name] = value;
  } else if (kind == kDone) {
    line >> journal->checks;
    journal->complete = true;
  }
}

}  // namespace

JournalWriter::JournalWriter(const std::filesystem::path& file)
    : file_(host::platform::OpenablePath(file), std::ios::binary) {}

void JournalWriter::Step(int64_t checks, const std::string& what) {
  file_ << kStep << ' ' << checks << ' ' << OneLine(what) << std::endl;
}

void JournalWriter::Failure(const std::string& what) {
  file_ << kFailure << ' ' << OneLine(what) << std::endl;
}

void JournalWriter::Number(const std::string& name, double value) {
  file_ << kNumber << ' ' << name << ' ' << value << std::endl;
}

void JournalWriter::Done(int64_t checks) { file_ << kDone << ' ' << checks << std::endl; }

Journal ReadJournal(const std::filesystem::path& file) {
  std::ifstream stream(host::platform::OpenablePath(file), std::ios::binary);
  Journal journal;
  for (std::string line; std::getline(stream, line);) ReadLine(line, &journal);
  return journal;
}

}  // namespace krv::tool
