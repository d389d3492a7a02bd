// GlContext through EGL without a surface: Mesa's surfaceless platform for software, the first
// device of the device platform for a GPU.
#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <glad/gl.h>

#include <cstring>
#include <mutex>
#include <vector>

#include "gl_context.h"
#include "gl_messages.h"

namespace krv::host {
namespace {

bool HasExtension(const char* list, const char* name) {
  return list != nullptr && std::strstr(list, name) != nullptr;
}

// The display of a GPU device, or EGL_NO_DISPLAY when there is none.
EGLDisplay GpuDisplay() {
  const char* extensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
  if (!HasExtension(extensions, "EGL_EXT_device_enumeration") ||
      !HasExtension(extensions, "EGL_EXT_platform_device")) {
    return EGL_NO_DISPLAY;
  }
  auto query_devices =
      reinterpret_cast<PFNEGLQUERYDEVICESEXTPROC>(eglGetProcAddress("eglQueryDevicesEXT"));
  auto query_string = reinterpret_cast<PFNEGLQUERYDEVICESTRINGEXTPROC>(
      eglGetProcAddress("eglQueryDeviceStringEXT"));
  auto get_display = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(
      eglGetProcAddress("eglGetPlatformDisplayEXT"));
  if (query_devices == nullptr || query_string == nullptr || get_display == nullptr) {
    return EGL_NO_DISPLAY;
  }
  EGLint count = 0;
  if (!query_devices(0, nullptr, &count) || count <= 0) return EGL_NO_DISPLAY;
  std::vector<EGLDeviceEXT> devices(static_cast<size_t>(count));
  if (!query_devices(count, devices.data(), &count)) return EGL_NO_DISPLAY;
  for (EGLDeviceEXT device : devices) {
    if (HasExtension(query_string(device, EGL_EXTENSIONS), "EGL_MESA_device_software")) continue;
    EGLDisplay display = get_display(EGL_PLATFORM_DEVICE_EXT, device, nullptr);
    if (display != EGL_NO_DISPLAY && eglInitialize(display, nullptr, nullptr)) return display;
  }
  return EGL_NO_DISPLAY;
}

EGLDisplay SoftwareDisplay() {
  auto get_display = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(
      eglGetProcAddress("eglGetPlatformDisplayEXT"));
  if (get_display == nullptr) return EGL_NO_DISPLAY;
  EGLDisplay display = get_display(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
  if (display == EGL_NO_DISPLAY || !eglInitialize(display, nullptr, nullptr)) return EGL_NO_DISPLAY;
  return display;
}

// Displays are never terminated: EGL counts no users of a display, so another context of this
// process may still live on it.
EGLDisplay SharedDisplay(GlContext::Renderer renderer) {
  static std::mutex mutex;
  const std::lock_guard lock(mutex);
  static EGLDisplay gpu = GpuDisplay();
  static EGLDisplay software = SoftwareDisplay();
  return renderer == GlContext::Renderer::kAny && gpu != EGL_NO_DISPLAY ? gpu : software;
}

class EglContext final : public GlContext {
 public:
  EglContext(EGLDisplay display, EGLContext context) : display_(display), context_(context) {}
  EglContext(const EglContext&) = delete;
  EglContext& operator=(const EglContext&) = delete;

  ~EglContext() override {
    if (EglContext::IsCurrent()) EglContext::ClearCurrent();
    eglDestroyContext(display_, context_);
  }

  bool MakeCurrent() override {
    if (!eglBindAPI(EGL_OPENGL_API) ||
        !eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, context_)) {
      return false;
    }
    // The functions are the same for every context of a process; threads must not load at once.
    static std::once_flag loaded;
    static bool success = false;
    std::call_once(loaded, [] { success = gladLoadGL(eglGetProcAddress) != 0; });
    if (success && !watched_) WatchGlMessages();
    watched_ = true;
    return success;
  }

  bool IsCurrent() const override { return eglGetCurrentContext() == context_; }

  void ClearCurrent() override {
    eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
  }

 private:
  EGLDisplay display_;
  EGLContext context_;
  bool watched_ = false;
};

}  // namespace

std::unique_ptr<GlContext> GlContext::Create(Renderer renderer, std::string* error) {
  auto fail = [error](const char* what) {
    *error = std::string("no OpenGL context: ") + what +
             " (software OpenGL comes with the Debian package libgl1-mesa-dri)";
    return nullptr;
  };
  EGLDisplay display = SharedDisplay(renderer);
  if (display == EGL_NO_DISPLAY) return fail("EGL offers no display to draw on");
  if (!eglBindAPI(EGL_OPENGL_API)) return fail("EGL does not offer OpenGL");

  const EGLint config_wish[] = {EGL_SURFACE_TYPE, 0, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_NONE};
  EGLConfig config = nullptr;
  EGLint count = 0;
  if (!eglChooseConfig(display, config_wish, &config, 1, &count) || count == 0) {
    return fail("EGL has no configuration for it");
  }
  // The built-in shaders are GLSL 1.20, which a core context refuses.
  const EGLint context_wish[] = {EGL_CONTEXT_MAJOR_VERSION,
                                 3,
                                 EGL_CONTEXT_MINOR_VERSION,
                                 2,
                                 EGL_CONTEXT_OPENGL_PROFILE_MASK,
                                 EGL_CONTEXT_OPENGL_COMPATIBILITY_PROFILE_BIT,
                                 WantsGlMessages() ? EGL_CONTEXT_OPENGL_DEBUG : EGL_NONE,
                                 EGL_TRUE,
                                 EGL_NONE};
  EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, context_wish);
  if (context == EGL_NO_CONTEXT) return fail("the driver has no OpenGL 3.2 compatibility context");
  return std::make_unique<EglContext>(display, context);
}

}  // namespace krv::host
