# VP9 alone: it is what WebM is written with.
export CROSS=$HOST-
./configure --target=x86_64-win64-gcc --prefix="$PREFIX" --disable-shared --enable-static \
  --disable-vp8 --disable-examples --disable-tools --disable-docs --disable-unit-tests \
  --enable-runtime-cpu-detect
make -j"$(nproc)"
make install
licence LICENSE PATENTS
