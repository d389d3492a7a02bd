// The tests of the validator.
#pragma once

#include <span>
#include <string_view>

namespace krv::tool {

class Bench;

// One test, which runs in a process of its own.
struct Check {
  const char* name;    // "group.claim"
  int strictness;      // from which it runs
  const char* demand;  // one sentence: what the plug-in has to do
  void (*run)(Bench& bench);
};

// All of them, in the order in which they run.
std::span<const Check> AllChecks();

// Null when there is none of that name.
const Check* FindCheck(std::string_view name);

}  // namespace krv::tool
