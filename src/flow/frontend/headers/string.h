#pragma once
#include <stddef.h>
#define memcpy __builtin_memcpy
#define memmove __builtin_memmove
#define memset __builtin_memset
int memcmp(const void*, const void*, size_t);
int strcmp(const char*, const char*);
char* strcpy(char*, const char*);
size_t strlen(const char*);
