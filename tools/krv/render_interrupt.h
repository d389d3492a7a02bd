// Ctrl-C as a wish to stop early.
#pragma once

namespace krv::tool {

// While an object lives, the first interrupt or termination signal only sets a flag; the second
// ends the process as usual. One object at a time.
class InterruptWatch {
 public:
  InterruptWatch();
  ~InterruptWatch();
  InterruptWatch(const InterruptWatch&) = delete;
  InterruptWatch& operator=(const InterruptWatch&) = delete;

  bool interrupted() const;
};

}  // namespace krv::tool
