#include "support/process.h"

#include <windows.h>

#include <optional>
#include <system_error>

namespace krv::test {
namespace {

std::wstring Wide(const std::string& utf8) {
  return std::filesystem::path(std::u8string(utf8.begin(), utf8.end())).wstring();
}

HANDLE Handle(intptr_t process) { return reinterpret_cast<HANDLE>(process); }

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

// A variable of this process, and so of those it starts, while the object lives.
class ScopedVariable {
 public:
  ScopedVariable(const std::string& name, const std::string& value) : name_(Wide(name)) {
    const DWORD size = GetEnvironmentVariableW(name_.c_str(), nullptr, 0);
    if (size > 0) {
      before_.emplace(size, L'\0');
      before_->resize(GetEnvironmentVariableW(name_.c_str(), before_->data(), size));
    }
    SetEnvironmentVariableW(name_.c_str(), Wide(value).c_str());
  }
  ~ScopedVariable() {
    SetEnvironmentVariableW(name_.c_str(), before_ ? before_->c_str() : nullptr);
  }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;

 private:
  std::wstring name_;
  std::optional<std::wstring> before_;
};

// A program finds its arguments in one line. Backslashes are special there only before a quote.
std::wstring Quoted(const std::string& argument) {
  std::string quoted = "\"" + argument;
  for (size_t i = argument.size(); i > 0 && argument[i - 1] == '\\'; --i) quoted += '\\';
  return Wide(quoted + "\"");
}

// Starts a program. On a busy machine Wine fails at it now and then, with an error of its own.
bool Create(const std::wstring& line, DWORD console, STARTUPINFOW& startup,
            PROCESS_INFORMATION& started) {
  constexpr int kAttempts = 5;
  constexpr DWORD kPauseMilliseconds = 200;
  for (int attempt = 1;; ++attempt) {
    std::wstring changeable = line;  // by the call
    if (CreateProcessW(nullptr, changeable.data(), nullptr, nullptr, TRUE, console, nullptr,
                       nullptr, &startup, &started)) {
      return true;
    }
    if (GetLastError() != ERROR_INTERNAL_ERROR || attempt == kAttempts) return false;
    Sleep(kPauseMilliseconds);
  }
}

}  // namespace

void Process::Start(const std::string& program, const std::vector<std::string>& arguments,
                    Interruptible interruptible, const Environment& environment) {
  std::wstring line = Quoted(program);
  for (const std::string& argument : arguments) line += L" " + Quoted(argument);
  const InheritedFile input(L"NUL", GENERIC_READ, OPEN_EXISTING);
  const InheritedFile output(folder_.path() / "stdout", GENERIC_WRITE, CREATE_ALWAYS);
  const InheritedFile errors(folder_.path() / "stderr", GENERIC_WRITE, CREATE_ALWAYS);
  STARTUPINFOW startup = {};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = input.get();
  startup.hStdOutput = output.get();
  startup.hStdError = errors.get();
  std::map<std::string, ScopedVariable> variables;
  for (const auto& [name, value] : environment) variables.try_emplace(name, name, value);
  PROCESS_INFORMATION started = {};
  // With a console of its own Interrupt reaches no other program.
  const DWORD console = interruptible == Interruptible::kYes ? CREATE_NO_WINDOW : DETACHED_PROCESS;
  if (!Create(line, console, startup, started)) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), program);
  }
  CloseHandle(started.hThread);
  process_ = reinterpret_cast<intptr_t>(started.hProcess);
}

void Process::Interrupt() {
  // The event goes to all programs of a console; this one, there as a guest, ignores it.
  FreeConsole();
  AttachConsole(GetProcessId(Handle(process_)));
  SetConsoleCtrlHandler(nullptr, TRUE);
  GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
}

int Process::WaitForCode() {
  WaitForSingleObject(Handle(process_), INFINITE);
  SetConsoleCtrlHandler(nullptr, FALSE);
  DWORD code = 0;
  GetExitCodeProcess(Handle(process_), &code);
  CloseHandle(Handle(process_));
  process_ = 0;
  return static_cast<int>(code);
}

}  // namespace krv::test
