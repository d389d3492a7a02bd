#include "gl_window.h"

#include "report.h"

namespace abi {

bool GlWindow::Open() {
  // A window class that is always there.
  window_ = CreateWindowExA(0, "STATIC", "", 0, 0, 0, 16, 16, nullptr, nullptr, nullptr, nullptr);
  if (!Expect(window_ != nullptr, "a window can be opened")) return false;
  device_ = GetDC(window_);
  PixelFormat wanted{};
  wanted.size = sizeof(wanted);
  wanted.version = 1;
  wanted.flags = kDrawToWindow | kSupportOpenGl;
  wanted.color_bits = 24;
  const int32_t index = ChoosePixelFormat(device_, &wanted);
  if (!Expect(index != 0 && SetPixelFormat(device_, index, &wanted) != 0,
              "the window takes an OpenGL pixel format")) {
    return false;
  }
  context_ = wglCreateContext(device_);
  return Expect(context_ != nullptr && wglMakeCurrent(device_, context_) != 0,
                "an OpenGL context can be made current");
}

void GlWindow::Close() {
  wglMakeCurrent(nullptr, nullptr);
  wglDeleteContext(context_);
  ReleaseDC(window_, device_);
  DestroyWindow(window_);
}

}  // namespace abi
