# Not by CMake: that sets the AVX flags for the whole library and so loses the choice at run time.
# The same instruction sets as in Debian's build: with others, transforms round differently.
export CFLAGS="$CFLAGS -fomit-frame-pointer -fstrict-aliasing"
autotools --enable-float --enable-sse2 --enable-avx --disable-fortran --disable-doc \
  --with-our-malloc --enable-threads --with-combined-threads
licence COPYING COPYRIGHT
