// A hidden window with an OpenGL context.
#pragma once

#include "win32.h"

namespace abi {

class GlWindow {
 public:
  // Opens the window and makes its context current on the calling thread. False, with a failed
  // check, when there is none to be had.
  bool Open();
  void Close();

 private:
  Handle window_ = nullptr;
  Handle device_ = nullptr;
  Handle context_ = nullptr;
};

}  // namespace abi
