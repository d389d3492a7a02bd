# The source comes without its configure script.
autoreconf -fi
autotools --disable-pie --disable-ssp
licence LICENSE
