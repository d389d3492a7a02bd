// A registrar made of a raw table, which records its calls.
#pragma once

#include <string>
#include <vector>

#include "support/raw_object.h"

namespace krv::test {

class RawRegistrar {
 public:
  RawRegistrar();
  RawRegistrar(const RawRegistrar&) = delete;
  RawRegistrar& operator=(const RawRegistrar&) = delete;

  void* object() { return &object_; }

  // One line per call: the slot, then the arguments in order, texts in quotes. For instance
  // `4: -1 0 "speed" "speed" 0.5 4 1.25 0`.
  std::vector<std::string> calls;

 private:
  RawObject<RawRegistrar> object_;
};

}  // namespace krv::test
