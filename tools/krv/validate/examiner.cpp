#include "validate/examiner.h"

#include <algorithm>

namespace krv::tool {
namespace {

// Of one expectation; what follows is counted only.
constexpr int kFailuresShown = 2;

double Milliseconds(std::chrono::nanoseconds time) {
  return std::chrono::duration<double, std::milli>(time).count();
}

}  // namespace

void Examiner::Step(const std::string& what) {
  const std::lock_guard lock(mutex_);
  step_ = what;
  journal_.Step(checks_, what);
}

void Examiner::Record(const std::string& expectation, const std::string& text) {
  if (++failures_[expectation] <= kFailuresShown) {
    journal_.Failure(text);
  } else {
    ++left_out_;
  }
}

bool Examiner::Expect(bool holds, std::string_view expected, std::string_view came) {
  const std::lock_guard lock(mutex_);
  ++checks_;
  if (holds) return true;
  const std::string expectation(expected);
  Record(expectation, step_ + ": expected " + expectation + ", came " + std::string(came));
  return false;
}

bool Examiner::ExpectCode(std::string_view operation, int32_t code,
                          std::initializer_list<int32_t> allowed) {
  if (code == kThrew) return false;  // noted already
  const bool holds = std::find(allowed.begin(), allowed.end(), code) != allowed.end();
  if (holds) return Expect(true, {}, {});
  std::string codes;
  for (const int32_t one : allowed) codes += (codes.empty() ? "" : " or ") + std::to_string(one);
  return Expect(false, codes + " from " + std::string(operation), std::to_string(code));
}

bool Examiner::ExpectCount(std::string_view what, int64_t count, int64_t expected) {
  return Expect(count == expected, std::to_string(expected) + " " + std::string(what),
                std::to_string(count));
}

void Examiner::TookFrame(std::chrono::nanoseconds time) {
  const std::lock_guard lock(mutex_);
  ++frames_;
  total_ += time;
  longest_ = std::max(longest_, time);
}

void Examiner::Fail(const std::string& what) {
  const std::lock_guard lock(mutex_);
  ++checks_;
  Record(what, step_ + ": " + what);
}

void Examiner::Finish() {
  const std::lock_guard lock(mutex_);
  if (left_out_ > 0) journal_.Failure("and " + std::to_string(left_out_) + " more");
  if (frames_ > 0) {
    journal_.Number("frames", static_cast<double>(frames_));
    journal_.Number("frame_ms_mean", Milliseconds(total_) / static_cast<double>(frames_));
    journal_.Number("frame_ms_longest", Milliseconds(longest_));
  }
  journal_.Done(checks_);
}

}  // namespace krv::tool
