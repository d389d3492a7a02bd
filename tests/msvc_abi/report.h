// Checks and their outcome: one line for each that failed.
#pragma once

#include <stdint.h>

#include "recorder.h"

namespace abi {

// Prints `what` and fails the program when `holds` is false. Returns `holds`.
bool Expect(bool holds, const char* what);
bool ExpectEqual(int64_t actual, int64_t expected, const char* what);
// Null is no text and equals none.
bool ExpectText(const char* actual, const char* expected, const char* what);
// As many failures as there are lines that differ, are missing or are too many.
bool ExpectLines(const Recorder& actual, const char* const* expected, int expected_count,
                 const char* what);

template <int count>
bool ExpectLines(const Recorder& actual, const char* const (&expected)[count], const char* what) {
  return ExpectLines(actual, expected, count, what);
}

int FailedChecks();

// printf-style, to the standard output, unbuffered.
void Print(const char* format, ...);

}  // namespace abi
