#pragma once
typedef unsigned int size_t;
typedef int ptrdiff_t;
#define NULL ((void*)0)
#define offsetof(type, member) __builtin_offsetof(type, member)
