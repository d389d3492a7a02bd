#include "report.h"

#include "c_library.h"
#include "win32.h"

namespace abi {
namespace {

int failed_checks = 0;

const char* OrNothing(const char* text) { return text == nullptr ? "nothing" : text; }

}  // namespace

void Print(const char* format, ...) {
  char text[2048];
  va_list arguments;
  va_start(arguments, format);
  vsnprintf(text, sizeof(text), format, arguments);
  va_end(arguments);
  text[sizeof(text) - 1] = '\0';
  uint32_t written = 0;
  WriteFile(GetStdHandle(kStandardOutput), text, static_cast<uint32_t>(strlen(text)), &written,
            nullptr);
}

bool Expect(bool holds, const char* what) {
  if (holds) return true;
  ++failed_checks;
  Print("FAILED: %s\n", what);
  return false;
}

bool ExpectEqual(int64_t actual, int64_t expected, const char* what) {
  if (actual == expected) return true;
  ++failed_checks;
  Print("FAILED: %s: %lld instead of %lld\n", what, actual, expected);
  return false;
}

bool ExpectText(const char* actual, const char* expected, const char* what) {
  if (actual != nullptr && expected != nullptr && strcmp(actual, expected) == 0) return true;
  ++failed_checks;
  Print("FAILED: %s: %s instead of %s\n", what, OrNothing(actual), OrNothing(expected));
  return false;
}

bool ExpectLines(const Recorder& actual, const char* const* expected, int expected_count,
                 const char* what) {
  bool holds = true;
  const int count = actual.count() > expected_count ? actual.count() : expected_count;
  for (int i = 0; i < count; ++i) {
    holds = ExpectText(actual.line(i), i < expected_count ? expected[i] : nullptr, what) && holds;
  }
  return holds;
}

int FailedChecks() { return failed_checks; }

}  // namespace abi
