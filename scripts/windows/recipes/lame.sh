autotools --disable-frontend --disable-decoder
licence COPYING LICENSE
