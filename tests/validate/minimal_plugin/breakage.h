// What is wrong with a build of the plug-in.
#pragma once

namespace krv::test {

enum class Breakage {
  kNone,
  kUntidy,    // leaves GL state, errors and objects behind, and memory
  kReckless,  // writes where it may not, reads what is not there, divides by nothing
  kRude,      // answers with wrong codes, throws, hangs, and is not the same twice
};

constexpr Breakage kBreakage = Breakage::KRV_BREAKAGE;

}  // namespace krv::test
