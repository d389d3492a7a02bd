// Facts about the running process.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace krv::host::platform {

// The running program's file; empty when the system does not tell.
std::filesystem::path ExecutableFile();

// The folder that the running program's file lies in; empty when the system does not tell.
std::filesystem::path ExecutableFolder();

// The program's arguments in UTF-8, without its name. `argc`, `argv`: those of main. On Windows
// they are not used: what main gets there has lost the letters that the system's code page lacks.
std::vector<std::string> ProgramArguments(int argc, char** argv);

// The memory of this process that is in use and not swapped out, in bytes.
int64_t ResidentBytes();

// The processor time that all threads of this process have used, in the program and in the system,
// in seconds. Windows counts it in steps of about 16 milliseconds.
double ProcessorSeconds();

// Sets an environment variable of this process, or removes it when `value` is null. Not while
// another thread runs that may read one.
void SetVariable(const char* name, const char* value);

// How many files, libraries being loaded and other system objects this process holds open.
int64_t OpenHandles();

// A crash of this process from now on leaves neither a core file nor a dialogue: somebody watches
// it and reports.
void CrashQuietly();

}  // namespace krv::host::platform
