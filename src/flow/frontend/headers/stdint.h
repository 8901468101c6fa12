#pragma once
typedef signed char int8_t;
typedef short int16_t;
typedef int int32_t;
typedef long long int64_t;
typedef unsigned char uint8_t;
typedef unsigned short uint16_t;
typedef unsigned int uint32_t;
typedef unsigned long long uint64_t;
typedef signed char int_least8_t;
typedef short int_least16_t;
typedef int int_least32_t;
typedef unsigned char uint_least8_t;
typedef unsigned short uint_least16_t;
typedef unsigned int uint_least32_t;
typedef int int_fast8_t;
typedef int int_fast16_t;
typedef int int_fast32_t;
typedef unsigned int uint_fast8_t;
typedef unsigned int uint_fast16_t;
typedef unsigned int uint_fast32_t;
typedef int intptr_t;
typedef unsigned int uintptr_t;
#define INT8_MIN (-128)
#define INT8_MAX 127
#define UINT8_MAX 255
#define INT16_MIN (-32768)
#define INT16_MAX 32767
#define UINT16_MAX 65535
#define INT32_MIN (-2147483647 - 1)
#define INT32_MAX 2147483647
#define UINT32_MAX 4294967295U
#define INT_LEAST8_MIN (-128)
#define INT_LEAST8_MAX 127
#define UINT_LEAST8_MAX 255
#define INT_LEAST16_MIN (-32768)
#define INT_LEAST16_MAX 32767
#define UINT_LEAST16_MAX 65535
#define INT_LEAST32_MIN (-2147483647 - 1)
#define INT_LEAST32_MAX 2147483647
#define UINT_LEAST32_MAX 4294967295U
#define INT_FAST8_MIN (-2147483647 - 1)
#define INT_FAST8_MAX 2147483647
#define UINT_FAST8_MAX 4294967295U
#define INT_FAST16_MIN (-2147483647 - 1)
#define INT_FAST16_MAX 2147483647
#define UINT_FAST16_MAX 4294967295U
#define INT_FAST32_MIN (-2147483647 - 1)
#define INT_FAST32_MAX 2147483647
#define UINT_FAST32_MAX 4294967295U
#define INTPTR_MIN (-2147483647 - 1)
#define INTPTR_MAX 2147483647
#define UINTPTR_MAX 4294967295U
#define PTRDIFF_MIN (-2147483647 - 1)
#define PTRDIFF_MAX 2147483647
#define SIZE_MAX 4294967295U
#define INT8_C(c) c
#define INT16_C(c) c
#define INT32_C(c) c
#define UINT8_C(c) c
#define UINT16_C(c) c
#define UINT32_C(c) c##U
