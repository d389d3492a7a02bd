// Counts what was looked at, and keeps what was not as it should be.
#pragma once

#include <chrono>
#include <cstdint>
#include <exception>
#include <initializer_list>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>

#include "validate/journal.h"

namespace krv::tool {

// Ends a check early, as a failure: without what is missing nothing more can be looked at.
class CannotGoOn : public std::exception {
 public:
  explicit CannotGoOn(std::string what) : what_(std::move(what)) {}
  const char* what() const noexcept override { return what_.c_str(); }

 private:
  std::string what_;
};

// Any thread.
class Examiner {
 public:
  // `journal` must outlive the examiner.
  explicit Examiner(JournalWriter* journal) : journal_(*journal) {}

  // Says what is done next.
  void Step(const std::string& what);

  // Looks at one thing. `expected` and `came` complete "expected ..., came ...". Returns `holds`.
  bool Expect(bool holds, std::string_view expected, std::string_view came);

  // That an operation answered one of the codes that the interface has for it.
  bool ExpectCode(std::string_view operation, int32_t code, std::initializer_list<int32_t> allowed);

  // That a count is what it should be.
  bool ExpectCount(std::string_view what, int64_t count, int64_t expected);

  // Calls the plug-in. An exception that comes out of it is a failure, and kThrew the result.
  template <class Operation>
  int32_t Call(std::string_view operation, Operation&& call);
  static constexpr int32_t kThrew = INT32_MIN;

  // The time of one frame, for the report.
  void TookFrame(std::chrono::nanoseconds time);

  // Fails what has no other failure, with the words of an exception.
  void Fail(const std::string& what);

  // Writes the frame times and the end of the journal.
  void Finish();

 private:
  void Record(const std::string& expectation, const std::string& text);

  std::mutex mutex_;
  JournalWriter& journal_;
  std::string step_;
  int64_t checks_ = 0;
  int64_t left_out_ = 0;                 // failures that are not in the journal
  std::map<std::string, int> failures_;  // by expectation
  int64_t frames_ = 0;
  std::chrono::nanoseconds total_{0};
  std::chrono::nanoseconds longest_{0};
};

template <class Operation>
int32_t Examiner::Call(std::string_view operation, Operation&& call) {
  const std::string expected = "no exception from " + std::string(operation);
  try {
    return std::forward<Operation>(call)();
  } catch (const std::exception& error) {
    Expect(false, expected, std::string("one that says: ") + error.what());
  } catch (...) {
    Expect(false, expected, "one");
  }
  return kThrew;
}

}  // namespace krv::tool
