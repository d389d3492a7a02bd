// The C functions that the host uses, declared by hand: this compiler has no headers of a C
// library. The linker's own runtime supplies them.
#pragma once

#include <stdarg.h>
#include <stddef.h>
#include <stdint.h>

extern "C" {

void* malloc(size_t size);
void free(void* block);
int memcmp(const void* left, const void* right, size_t size);
void* memcpy(void* destination, const void* source, size_t size);
void* memset(void* destination, int value, size_t size);
int strcmp(const char* left, const char* right);
size_t strlen(const char* text);
int snprintf(char* buffer, size_t size, const char* format, ...);
int vsnprintf(char* buffer, size_t size, const char* format, va_list arguments);

}  // extern "C"
