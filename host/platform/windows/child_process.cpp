#include "platform/child_process.h"

#include <windows.h>

#include <cstdio>

#include "platform/file_system.h"
#include "platform/windows/system_message.h"
#include "utf8_path.h"

namespace krv::host::platform {
namespace {

// An inheritable handle of a file; closed with the object.
class InheritedFile {
 public:
  InheritedFile(const std::wstring& path, DWORD access, DWORD disposition) {
    SECURITY_ATTRIBUTES inheritable = {sizeof(inheritable), nullptr, TRUE};
    handle_ = CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable,
                          disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
  }
  ~InheritedFile() { CloseHandle(handle_); }
  InheritedFile(const InheritedFile&) = delete;
  InheritedFile& operator=(const InheritedFile&) = delete;
  HANDLE get() const { return handle_; }

 private:
  HANDLE handle_;
};

// A program finds its arguments in one line. Backslashes are special there only before a quote.
std::wstring Quoted(const std::wstring& argument) {
  std::wstring quoted = L"\"";
  size_t backslashes = 0;
  for (const wchar_t letter : argument) {
    if (letter == L'"') quoted.append(backslashes + 1, L'\\');
    backslashes = letter == L'\\' ? backslashes + 1 : 0;
    quoted += letter;
  }
  return quoted.append(backslashes, L'\\') + L'"';
}

// Starts a program. A busy machine fails at it now and then with an error of its own.
bool Create(const std::wstring& line, STARTUPINFOW& startup, PROCESS_INFORMATION& started) {
  constexpr int kAttempts = 5;
  constexpr DWORD kPauseMilliseconds = 200;
  for (int attempt = 1;; ++attempt) {
    std::wstring changeable = line;  // by the call
    if (CreateProcessW(nullptr, changeable.data(), nullptr, nullptr, TRUE, DETACHED_PROCESS,
                       nullptr, nullptr, &startup, &started)) {
      return true;
    }
    if (GetLastError() != ERROR_INTERNAL_ERROR || attempt == kAttempts) return false;
    Sleep(kPauseMilliseconds);
  }
}

const char* ExceptionName(DWORD code) {
  switch (code) {
    case EXCEPTION_ACCESS_VIOLATION:
      return "access violation";
    case EXCEPTION_STACK_OVERFLOW:
      return "stack overflow";
    case EXCEPTION_INT_DIVIDE_BY_ZERO:
      return "integer division by zero";
    case EXCEPTION_INT_OVERFLOW:
      return "integer overflow";
    case EXCEPTION_ILLEGAL_INSTRUCTION:
      return "illegal instruction";
    default:
      return "exception";
  }
}

ChildEnd Classify(DWORD code) {
  constexpr DWORD kFirstException = 0xC0000000;
  if (code < kFirstException) return {ChildEnd::Kind::kEnded, static_cast<int>(code), {}};
  char text[64];
  std::snprintf(text, sizeof text, "0x%08lX, %s", code, ExceptionName(code));
  return {ChildEnd::Kind::kCrashed, 0, text};
}

}  // namespace

ChildEnd RunChild(const ChildCommand& command) {
  std::wstring line = Quoted(command.program.wstring());
  for (const std::string& argument : command.arguments) {
    line += L" " + Quoted(PathFromUtf8(argument).wstring());
  }
  const InheritedFile input(L"NUL", GENERIC_READ, OPEN_EXISTING);
  const InheritedFile output(OpenablePath(command.output).wstring(), GENERIC_WRITE, CREATE_ALWAYS);
  STARTUPINFOW startup = {};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = input.get();
  startup.hStdOutput = output.get();
  startup.hStdError = output.get();
  PROCESS_INFORMATION started = {};
  if (!Create(line, startup, started)) {
    return {ChildEnd::Kind::kNotStarted, 0, SystemMessage(GetLastError())};
  }
  CloseHandle(started.hThread);
  ChildEnd end{ChildEnd::Kind::kTimedOut, 0, {}};
  if (WaitForSingleObject(started.hProcess, static_cast<DWORD>(command.limit.count())) ==
      WAIT_OBJECT_0) {
    DWORD code = 0;
    GetExitCodeProcess(started.hProcess, &code);
    end = Classify(code);
  } else {
    TerminateProcess(started.hProcess, 1);
    WaitForSingleObject(started.hProcess, INFINITE);
  }
  CloseHandle(started.hProcess);
  return end;
}

}  // namespace krv::host::platform
