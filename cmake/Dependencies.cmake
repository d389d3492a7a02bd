# The libraries the project links, as targets krv_dep_*. All of them are Debian packages; which ones
# is listed in scripts/setup.sh.

find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
find_package(nlohmann_json 3.6.1 REQUIRED)

pkg_check_modules(FFTWF REQUIRED IMPORTED_TARGET fftw3f)
pkg_check_modules(SODIUM REQUIRED IMPORTED_TARGET libsodium)
pkg_check_modules(EGL REQUIRED IMPORTED_TARGET egl)

# Debian's small OpenCV packages (core and imgproc alone) carry no CMake or pkg-config file.
find_path(OPENCV_INCLUDE_DIR opencv2/core.hpp PATH_SUFFIXES opencv4 REQUIRED)
find_library(OPENCV_CORE_LIBRARY opencv_core REQUIRED)
find_library(OPENCV_IMGPROC_LIBRARY opencv_imgproc REQUIRED)
add_library(krv_dep_opencv INTERFACE)
target_include_directories(krv_dep_opencv SYSTEM INTERFACE ${OPENCV_INCLUDE_DIR})
target_link_libraries(krv_dep_opencv INTERFACE ${OPENCV_IMGPROC_LIBRARY} ${OPENCV_CORE_LIBRARY})

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
