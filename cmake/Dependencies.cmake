# The libraries the project links, as targets krv_dep_*. On Linux they are the Debian packages of
# scripts/packages.txt; for Windows they are built from the sources of the same packages.

if(WIN32)
  set(CMAKE_FIND_LIBRARY_SUFFIXES .a)  # else a library's DLL comes before the static library
endif()
find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)

# Libraries that are headers alone serve both platforms. Cross compilers must not see the folder
# that they are in, with the system's own headers.
if(CMAKE_CROSSCOMPILING)
  set(KRV_HEADERS_DIR ${CMAKE_BINARY_DIR}/generated/headers)
  file(MAKE_DIRECTORY ${KRV_HEADERS_DIR})
  foreach(name IN ITEMS nlohmann CLI valijson)
    file(CREATE_LINK /usr/include/${name} ${KRV_HEADERS_DIR}/${name} SYMBOLIC)
  endforeach()
  add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED)
  target_include_directories(nlohmann_json::nlohmann_json SYSTEM INTERFACE ${KRV_HEADERS_DIR})
else()
  find_package(nlohmann_json 3.6.1 REQUIRED)
endif()
add_library(krv_dep_cli INTERFACE)
target_include_directories(krv_dep_cli SYSTEM INTERFACE ${KRV_HEADERS_DIR})
add_library(krv_dep_valijson INTERFACE)
target_include_directories(krv_dep_valijson SYSTEM INTERFACE ${KRV_HEADERS_DIR})

pkg_check_modules(FFTWF REQUIRED IMPORTED_TARGET fftw3f)
pkg_check_modules(SODIUM REQUIRED IMPORTED_TARGET libsodium)
if(NOT WIN32)
  pkg_check_modules(EGL REQUIRED IMPORTED_TARGET egl)
endif()

# Debian's small OpenCV packages carry no CMake or pkg-config file.
find_path(OPENCV_INCLUDE_DIR opencv2/core.hpp PATH_SUFFIXES opencv4 REQUIRED)
find_library(OPENCV_CORE_LIBRARY opencv_core REQUIRED)
find_library(OPENCV_IMGPROC_LIBRARY opencv_imgproc REQUIRED)
find_library(OPENCV_OBJDETECT_LIBRARY opencv_objdetect REQUIRED)
find_library(OPENCV_DNN_LIBRARY opencv_dnn REQUIRED)
add_library(krv_dep_opencv INTERFACE)
target_include_directories(krv_dep_opencv SYSTEM INTERFACE ${OPENCV_INCLUDE_DIR})
target_link_libraries(krv_dep_opencv INTERFACE ${OPENCV_IMGPROC_LIBRARY} ${OPENCV_CORE_LIBRARY})
if(WIN32)
  find_library(ZLIB_LIBRARY libz.a REQUIRED)  # core's own need, as a static library
  target_link_libraries(krv_dep_opencv INTERFACE ${ZLIB_LIBRARY})
endif()
# What finds people, for the AI filter plug-in alone.
add_library(krv_dep_opencv_people INTERFACE)
target_link_libraries(krv_dep_opencv_people INTERFACE
  ${OPENCV_OBJDETECT_LIBRARY} ${OPENCV_DNN_LIBRARY} krv_dep_opencv)
if(WIN32)
  find_library(PROTOBUF_LIBRARY protobuf REQUIRED)  # the networks' files
  target_link_libraries(krv_dep_opencv_people INTERFACE ${PROTOBUF_LIBRARY})
endif()

# The window of `krv studio`.
pkg_check_modules(SDL IMPORTED_TARGET sdl2)
pkg_check_modules(IMGUI IMPORTED_TARGET imgui)
set(KRV_STUDIO OFF)
if(SDL_FOUND AND IMGUI_FOUND)
  set(KRV_STUDIO ON)
  # As headers of the system, whose warnings are not ours.
  add_library(krv_dep_window INTERFACE)
  target_link_libraries(krv_dep_window INTERFACE PkgConfig::IMGUI PkgConfig::SDL)
  target_include_directories(krv_dep_window SYSTEM INTERFACE
    ${SDL_INCLUDE_DIRS} ${IMGUI_INCLUDE_DIRS} ${IMGUI_INCLUDEDIR}/backends)
else()
  message(STATUS "Built without `krv studio`: it needs SDL 2 and Dear ImGui")
endif()

# The OpenGL function loader is generated at build time.
find_program(GLAD_PROGRAM glad REQUIRED)
set(KRV_GLAD_DIR ${CMAKE_BINARY_DIR}/generated/glad)
add_custom_command(
  OUTPUT ${KRV_GLAD_DIR}/src/gl.c ${KRV_GLAD_DIR}/include/glad/gl.h
  COMMAND ${GLAD_PROGRAM} --reproducible --quiet --api gl:compatibility=3.3
          --extensions GL_EXT_gpu_shader4,GL_KHR_debug --out-path ${KRV_GLAD_DIR} c
  COMMENT "Generating the OpenGL function loader"
  VERBATIM)
add_library(krv_dep_glad STATIC ${KRV_GLAD_DIR}/src/gl.c ${KRV_GLAD_DIR}/include/glad/gl.h)
target_include_directories(krv_dep_glad SYSTEM PUBLIC ${KRV_GLAD_DIR}/include)
