// The functions of Windows and of OpenGL 1.1 that the host calls, declared by hand: this compiler
// has no headers of the platform.
#pragma once

#include <stdint.h>

#define KRV_WIN32 extern "C" __declspec(dllimport)

namespace abi {

using Handle = void*;

constexpr uint32_t kStandardOutput = 0xFFFFFFF5;  // -11

constexpr uint32_t kDrawToWindow = 0x4;
constexpr uint32_t kSupportOpenGl = 0x20;

// PIXELFORMATDESCRIPTOR.
struct PixelFormat {
  uint16_t size;
  uint16_t version;
  uint32_t flags;
  uint8_t pixel_type;  // 0: RGBA
  uint8_t color_bits;
  uint8_t unused[16];
  uint32_t more_unused[3];
};
static_assert(sizeof(PixelFormat) == 40);

constexpr uint32_t kGlTexture2d = 0x0DE1;
constexpr uint32_t kGlUnsignedByte = 0x1401;
constexpr uint32_t kGlBgra = 0x80E1;
constexpr int32_t kGlRgba8 = 0x8058;
constexpr uint32_t kGlTextureMagFilter = 0x2800;
constexpr uint32_t kGlTextureMinFilter = 0x2801;
constexpr uint32_t kGlTextureWrapS = 0x2802;
constexpr uint32_t kGlTextureWrapT = 0x2803;
constexpr int32_t kGlLinear = 0x2601;
constexpr int32_t kGlMirroredRepeat = 0x8370;
constexpr uint32_t kGlPackRowLength = 0x0D02;

}  // namespace abi

KRV_WIN32 abi::Handle GetStdHandle(uint32_t which);
KRV_WIN32 int32_t WriteFile(abi::Handle file, const void* bytes, uint32_t count, uint32_t* written,
                            void* overlapped);
KRV_WIN32 abi::Handle LoadLibraryA(const char* path);
KRV_WIN32 void* GetProcAddress(abi::Handle library, const char* name);
KRV_WIN32 uint32_t GetLastError();

KRV_WIN32 abi::Handle CreateWindowExA(uint32_t extended_style, const char* class_name,
                                      const char* title, uint32_t style, int32_t x, int32_t y,
                                      int32_t width, int32_t height, abi::Handle parent,
                                      abi::Handle menu, abi::Handle instance, void* parameter);
KRV_WIN32 int32_t DestroyWindow(abi::Handle window);
KRV_WIN32 abi::Handle GetDC(abi::Handle window);
KRV_WIN32 int32_t ReleaseDC(abi::Handle window, abi::Handle device);
KRV_WIN32 int32_t ChoosePixelFormat(abi::Handle device, const abi::PixelFormat* wanted);
KRV_WIN32 int32_t SetPixelFormat(abi::Handle device, int32_t index, const abi::PixelFormat* wanted);

KRV_WIN32 abi::Handle wglCreateContext(abi::Handle device);
KRV_WIN32 int32_t wglMakeCurrent(abi::Handle device, abi::Handle context);
KRV_WIN32 int32_t wglDeleteContext(abi::Handle context);

KRV_WIN32 void glGenTextures(int32_t count, uint32_t* names);
KRV_WIN32 void glDeleteTextures(int32_t count, const uint32_t* names);
KRV_WIN32 void glBindTexture(uint32_t target, uint32_t name);
KRV_WIN32 void glTexParameteri(uint32_t target, uint32_t name, int32_t value);
KRV_WIN32 void glTexImage2D(uint32_t target, int32_t level, int32_t internal_format, int32_t width,
                            int32_t height, int32_t border, uint32_t format, uint32_t type,
                            const void* pixels);
KRV_WIN32 void glGetTexImage(uint32_t target, int32_t level, uint32_t format, uint32_t type,
                             void* pixels);
KRV_WIN32 void glPixelStorei(uint32_t name, int32_t value);
KRV_WIN32 uint32_t glGetError();
