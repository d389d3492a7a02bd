#include <windows.h>

#include <shellapi.h>

#include "platform/platform.h"

namespace example {
namespace {

std::string Utf8(const wchar_t* text) {
  const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text, -1, utf8.data(), size, nullptr, nullptr);
  utf8.pop_back();  // the end of the text
  return utf8;
}

std::wstring Wide(const std::string& text) {
  const int size = MultiByteToWideChar(CP_UTF8, 0, text.c_str(), -1, nullptr, 0);
  std::wstring wide(static_cast<size_t>(size), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.c_str(), -1, wide.data(), size);
  wide.pop_back();
  return wide;
}

}  // namespace

// main's own arguments are not UTF-8 on Windows.
std::vector<std::string> Arguments(int /*argc*/, char** /*argv*/) {
  int count = 0;
  wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(Utf8(wide[i]));
  LocalFree(wide);
  return arguments;
}

void* LoadLibraryFile(const std::string& path) { return LoadLibraryW(Wide(path).c_str()); }

void* FindFunction(void* library, const char* name) {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

// A context belongs to the pixel format of a window, so there is one, never shown.
bool MakeGlContextCurrent() {
  HWND window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                                GetModuleHandleW(nullptr), nullptr);
  HDC device = GetDC(window);
  PIXELFORMATDESCRIPTOR wish{};
  wish.nSize = sizeof(wish);
  wish.nVersion = 1;
  wish.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER;
  wish.iPixelType = PFD_TYPE_RGBA;
  wish.cColorBits = 32;
  if (!SetPixelFormat(device, ChoosePixelFormat(device, &wish), &wish)) return false;
  return wglMakeCurrent(device, wglCreateContext(device)) == TRUE;
}

}  // namespace example
