// How a plug-in file marks the functions that it exports.
#pragma once

#if defined(_WIN32)
#define KRV_EXPORT __declspec(dllexport)
#else
#define KRV_EXPORT __attribute__((visibility("default")))
#endif
