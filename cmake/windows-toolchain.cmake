# Windows x64 by mingw-w64 with POSIX threads, on Linux. The libraries are those that
# scripts/windows/dependencies.sh has built.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(host x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${host}-gcc-posix)
set(CMAKE_CXX_COMPILER ${host}-g++-posix)
set(CMAKE_RC_COMPILER ${host}-windres)

set(libraries_file ${CMAKE_CURRENT_LIST_DIR}/../build/windows-libraries.txt)
if(NOT EXISTS ${libraries_file})
  message(FATAL_ERROR "Run scripts/windows/dependencies.sh first: it builds the libraries for Windows")
endif()
file(STRINGS ${libraries_file} KRV_WINDOWS_LIBRARIES)

set(CMAKE_FIND_ROOT_PATH ${KRV_WINDOWS_LIBRARIES} /usr/${host})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
list(TRANSFORM KRV_WINDOWS_LIBRARIES APPEND /lib/pkgconfig OUTPUT_VARIABLE pkgconfig_folders)
list(JOIN pkgconfig_folders ":" pkgconfig_folders)
set(ENV{PKG_CONFIG_LIBDIR} ${pkgconfig_folders})
set(PKG_CONFIG_ARGN --static)

# One file that needs nothing but Windows.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
set(CMAKE_EXE_LINKER_FLAGS_RELEASE_INIT "-s -Wl,--gc-sections")
set(CMAKE_MODULE_LINKER_FLAGS_RELEASE_INIT "-s -Wl,--gc-sections")

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/windows/run.sh)
