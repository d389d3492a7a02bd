// A library without the functions of a plug-in.
extern "C" __attribute__((visibility("default"))) int NotAPlugin() { return 0; }
