# Debian's source has no bundled zlib; core needs one.
zlib=/usr/x86_64-w64-mingw32
protobuf=${needed[0]}
cmake -S . -B build -G Ninja \
  -DCMAKE_SYSTEM_NAME=Windows -DCMAKE_SYSTEM_PROCESSOR=x86_64 -DCMAKE_BUILD_TYPE=Release \
  -DCMAKE_C_COMPILER="$CC" -DCMAKE_CXX_COMPILER="$CXX" -DCMAKE_RC_COMPILER="$HOST-windres" \
  -DCMAKE_FIND_ROOT_PATH="/usr/$HOST" -DCMAKE_FIND_ROOT_PATH_MODE_PROGRAM=NEVER \
  -DCMAKE_FIND_ROOT_PATH_MODE_INCLUDE=ONLY -DCMAKE_FIND_ROOT_PATH_MODE_LIBRARY=ONLY \
  -DCMAKE_INSTALL_PREFIX="$PREFIX" -DBUILD_SHARED_LIBS=OFF \
  -DBUILD_LIST=core,imgproc,objdetect,dnn \
  -DCPU_BASELINE=SSE4_2 -DCPU_DISPATCH=AVX2 \
  -DBUILD_ZLIB=OFF -DZLIB_INCLUDE_DIR="$zlib/include" -DZLIB_LIBRARY="$zlib/lib/libz.a" \
  -DBUILD_PROTOBUF=OFF -DProtobuf_INCLUDE_DIR="$protobuf/include" \
  -DProtobuf_LIBRARY="$protobuf/lib/libprotobuf.a" -DPROTOBUF_UPDATE_FILES=ON \
  -DProtobuf_PROTOC_EXECUTABLE=/usr/bin/protoc \
  -DBUILD_TESTS=OFF -DBUILD_PERF_TESTS=OFF -DBUILD_EXAMPLES=OFF -DBUILD_opencv_apps=OFF \
  -DBUILD_JAVA=OFF -DBUILD_opencv_python3=OFF -DBUILD_opencv_js=OFF -DBUILD_DOCS=OFF \
  -DWITH_IPP=OFF -DWITH_ITT=OFF -DWITH_OPENCL=OFF -DWITH_LAPACK=OFF -DWITH_EIGEN=OFF \
  -DWITH_DIRECTX=OFF -DWITH_WIN32UI=OFF -DWITH_QUIRC=OFF -DWITH_ADE=OFF \
  -DWITH_FFMPEG=OFF -DWITH_GSTREAMER=OFF -DWITH_DSHOW=OFF -DWITH_MSMF=OFF -DWITH_JPEG=OFF \
  -DWITH_PNG=OFF -DWITH_TIFF=OFF -DWITH_WEBP=OFF -DWITH_OPENJPEG=OFF -DWITH_JASPER=OFF \
  -DWITH_OPENEXR=OFF -DWITH_VTK=OFF -DWITH_OPENVX=OFF -DOPENCV_GENERATE_PKGCONFIG=OFF
cmake --build build
cmake --install build
# One layout, as Debian installs it.
find "$PREFIX" -name 'libopencv_*.a' -exec mkdir -p "$PREFIX/lib" \; -exec mv {} "$PREFIX/lib/" \;
for library in core imgproc objdetect dnn; do
  mv "$PREFIX/lib/libopencv_$library"[0-9]*.a "$PREFIX/lib/libopencv_$library.a"
done
licence LICENSE
