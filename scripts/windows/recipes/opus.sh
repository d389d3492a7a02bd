autotools --disable-doc --disable-extra-programs --disable-stack-protector
licence COPYING
