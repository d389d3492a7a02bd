// launch.exe PROGRAM [ARGUMENT...]: runs a program, with this one's streams, and ends with its
// code.
//
// A program that Wine itself starts may lose its code: Wine kills a process that takes long to end,
// as those with many threads do on a busy machine, and Linux then reports the kill. The code that
// Windows programs see stays.
#include <windows.h>

// The command line behind its first word.
static wchar_t* rest_of(wchar_t* line) {
  int quoted = 0;
  for (; *line != 0 && (quoted || *line != L' '); ++line) quoted ^= *line == L'"';
  while (*line == L' ') ++line;
  return line;
}

int main(void) {
  STARTUPINFOW startup = {.cb = sizeof(startup), .dwFlags = STARTF_USESTDHANDLES};
  startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
  startup.hStdOutput = GetStdHandle(STD_OUTPUT_HANDLE);
  startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
  PROCESS_INFORMATION process;
  // On a busy machine Wine fails to start a program now and then, with an error of its own.
  for (int attempt = 1; !CreateProcessW(NULL, rest_of(GetCommandLineW()), NULL, NULL, TRUE, 0, NULL,
                                        NULL, &startup, &process);
       ++attempt) {
    if (GetLastError() != ERROR_INTERNAL_ERROR || attempt == 5) return 126;
    Sleep(200);
  }
  DWORD code = 127;
  WaitForSingleObject(process.hProcess, INFINITE);
  GetExitCodeProcess(process.hProcess, &code);
  return (int)code;
}
