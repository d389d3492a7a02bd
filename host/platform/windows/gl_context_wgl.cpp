// GlContext through WGL. WGL draws on windows only, and a window belongs to the thread that made
// it, while a context may come to be current on another. So every thread has one hidden window of
// its own, which stands for all contexts on that thread; nothing is ever drawn on it.
#include <glad/gl.h>
#include <windows.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <type_traits>
#include <utility>

#include "gl_context.h"
#include "gl_messages.h"
#include "platform/windows/system_message.h"

namespace krv::host {
namespace {

using CreateContextAttribs = HGLRC(WINAPI*)(HDC device, HGLRC share, const int* attributes);

// Of the extensions WGL_ARB_create_context and WGL_ARB_create_context_profile.
constexpr int kContextMajorVersion = 0x2091;
constexpr int kContextMinorVersion = 0x2092;
constexpr int kContextFlags = 0x2094;
constexpr int kDebugContext = 0x0001;
constexpr int kContextProfileMask = 0x9126;
constexpr int kCompatibilityProfile = 0x0002;

constexpr wchar_t kWindowClass[] = L"KrvHeadlessContext";

bool RegisterWindowClass() {
  WNDCLASSEXW description{};
  description.cbSize = sizeof(description);
  description.style = CS_OWNDC;  // the window's device context stays the same
  description.lpfnWndProc = DefWindowProcW;
  description.hInstance = GetModuleHandleW(nullptr);
  description.lpszClassName = kWindowClass;
  return RegisterClassExW(&description) != 0;
}

// The same for every window, so that every context fits every window. Drivers accelerate formats
// with two buffers only.
bool ChooseFormat(HDC device) {
  PIXELFORMATDESCRIPTOR wish{};
  wish.nSize = sizeof(wish);
  wish.nVersion = 1;
  wish.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER;
  wish.iPixelType = PFD_TYPE_RGBA;
  wish.cColorBits = 32;
  const int format = ChoosePixelFormat(device, &wish);
  return format != 0 && SetPixelFormat(device, format, &wish);
}

// Null on failure.
HDC CreateDrawingWindow() {
  static const bool registered = RegisterWindowClass();
  if (!registered) return nullptr;
  const HWND window = CreateWindowExW(0, kWindowClass, L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                                      GetModuleHandleW(nullptr), nullptr);
  if (window == nullptr) return nullptr;
  const HDC device = GetDC(window);
  if (device != nullptr && ChooseFormat(device)) return device;
  DestroyWindow(window);
  return nullptr;
}

// The device context of the calling thread's window, null on failure. Windows destroys the window
// with its thread; contexts outlive it.
HDC ThreadDevice() {
  thread_local HDC device = nullptr;
  if (device == nullptr) device = CreateDrawingWindow();
  return device;
}

// The address of a GL or WGL function for the current context, or null.
GLADapiproc FindFunction(const char* name) {
  const auto function = reinterpret_cast<GLADapiproc>(wglGetProcAddress(name));
  const auto value = reinterpret_cast<intptr_t>(function);
  if (value < -1 || value > 3) return function;  // some drivers return these in place of null
  // The functions of OpenGL 1.1 are the library's own exports alone.
  static const HMODULE library = GetModuleHandleW(L"opengl32.dll");
  return reinterpret_cast<GLADapiproc>(GetProcAddress(library, name));
}

// Leaves the calling thread with the context that it had.
class CurrentContextKeeper {
 public:
  CurrentContextKeeper() : device_(wglGetCurrentDC()), context_(wglGetCurrentContext()) {}
  ~CurrentContextKeeper() { wglMakeCurrent(device_, context_); }
  CurrentContextKeeper(const CurrentContextKeeper&) = delete;
  CurrentContextKeeper& operator=(const CurrentContextKeeper&) = delete;

 private:
  HDC device_;
  HGLRC context_;
};

struct ContextDeleter {
  void operator()(HGLRC context) const { wglDeleteContext(context); }
};
using ContextPtr = std::unique_ptr<std::remove_pointer_t<HGLRC>, ContextDeleter>;

// Of the current context; major * 10 + minor.
int CurrentVersion() {
  using GetStringFunction = const GLubyte*(APIENTRY*)(GLenum);
  const auto get_string = reinterpret_cast<GetStringFunction>(FindFunction("glGetString"));
  const GLubyte* text = get_string == nullptr ? nullptr : get_string(GL_VERSION);
  if (text == nullptr || text[0] < '0' || text[0] > '9' || text[1] != '.') return 0;
  return (text[0] - '0') * 10 + (text[2] - '0');
}

// An OpenGL 3.2 compatibility context, for the built-in shaders are GLSL 1.20, which a core context
// refuses. Null when the driver has none.
ContextPtr CreateContext(HDC device) {
  const CurrentContextKeeper keeper;
  // What a driver can do is told to a thread with a context only.
  ContextPtr plain(wglCreateContext(device));
  if (plain == nullptr || !wglMakeCurrent(device, plain.get())) return nullptr;
  const auto create =
      reinterpret_cast<CreateContextAttribs>(FindFunction("wglCreateContextAttribsARB"));
  if (create == nullptr) return CurrentVersion() >= 32 ? std::move(plain) : nullptr;
  const int wish[] = {kContextMajorVersion,
                      3,
                      kContextMinorVersion,
                      2,
                      kContextProfileMask,
                      kCompatibilityProfile,
                      kContextFlags,
                      WantsGlMessages() ? kDebugContext : 0,
                      0};
  return ContextPtr(create(device, nullptr, wish));
}

class WglContext final : public GlContext {
 public:
  explicit WglContext(ContextPtr context) : context_(std::move(context)) {}

  ~WglContext() override {
    if (WglContext::IsCurrent()) WglContext::ClearCurrent();
  }
  WglContext(const WglContext&) = delete;
  WglContext& operator=(const WglContext&) = delete;

  bool MakeCurrent() override {
    const HDC device = ThreadDevice();
    if (device == nullptr || !wglMakeCurrent(device, context_.get())) return false;
    // The functions are the same for all contexts of one pixel format; threads must not load at
    // once.
    static std::once_flag loaded;
    static bool success = false;
    std::call_once(loaded, [] { success = gladLoadGL(FindFunction) != 0; });
    if (success && !watched_) WatchGlMessages();
    watched_ = true;
    return success;
  }

  bool IsCurrent() const override { return wglGetCurrentContext() == context_.get(); }

  void ClearCurrent() override { wglMakeCurrent(nullptr, nullptr); }

 private:
  ContextPtr context_;
  bool watched_ = false;
};

}  // namespace

// Which renderer there is lies with the opengl32.dll that the process has loaded.
std::unique_ptr<GlContext> GlContext::Create(Renderer, std::string* error) {
  const auto fail = [error](const std::string& what) {
    *error = "no OpenGL context: " + what +
             " (the graphics card's driver brings OpenGL; for software, put an opengl32.dll that "
             "draws in software beside the program)";
    return nullptr;
  };
  const HDC device = ThreadDevice();
  if (device == nullptr) {
    return fail("Windows has no window to draw on: " + platform::SystemMessage(GetLastError()));
  }
  ContextPtr context = CreateContext(device);
  if (context == nullptr) return fail("the driver has no OpenGL 3.2 compatibility context");
  return std::make_unique<WglContext>(std::move(context));
}

}  // namespace krv::host
