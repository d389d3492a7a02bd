./configure --host="$HOST" --cross-prefix="$HOST-" --prefix="$PREFIX" --enable-static \
  --disable-cli --disable-opencl --enable-strip
make -j"$(nproc)"
make install
licence COPYING
