#pragma once
#define HUGE_VAL __builtin_huge_val()
#define HUGE_VALF __builtin_huge_valf()
#define INFINITY __builtin_inff()
#define NAN __builtin_nanf("")
#define M_E 2.7182818284590452354
#define M_LOG2E 1.4426950408889634074
#define M_LOG10E 0.43429448190325182765
#define M_LN2 0.69314718055994530942
#define M_LN10 2.30258509299404568402
#define M_PI 3.14159265358979323846
#define M_PI_2 1.57079632679489661923
#define M_PI_4 0.78539816339744830962
#define M_1_PI 0.31830988618379067154
#define M_2_PI 0.63661977236758134308
#define M_2_SQRTPI 1.12837916709551257390
#define M_SQRT2 1.41421356237309504880
#define M_SQRT1_2 0.70710678118654752440
#define isnan(x) __builtin_isnan(x)
#define isinf(x) __builtin_isinf(x)
#define isfinite(x) __builtin_isfinite(x)
#define isnormal(x) __builtin_isnormal(x)
#define signbit(x) __builtin_signbit(x)
#define FP_NAN 0
#define FP_INFINITE 1
#define FP_ZERO 2
#define FP_SUBNORMAL 3
#define FP_NORMAL 4
#define fpclassify(x) _Generic((x), float : __xfcflow_classify_float, default : __xfcflow_classify_double)(x)
#define isgreater(x, y) __builtin_isgreater(x, y)
#define isgreaterequal(x, y) __builtin_isgreaterequal(x, y)
#define isless(x, y) __builtin_isless(x, y)
#define islessequal(x, y) __builtin_islessequal(x, y)
#define islessgreater(x, y) __builtin_islessgreater(x, y)
#define isunordered(x, y) __builtin_isunordered(x, y)
typedef float float_t;
typedef double double_t;
int ilogb(double);
int ilogbf(float);
double frexp(double, int*);
float frexpf(float, int*);
double trunc(double);
float truncf(float);
double round(double);
float roundf(float);
double copysign(double, double);
float copysignf(float, float);
static inline long lround(double x) { return (long)round(x); }
static inline long lroundf(float x) { return (long)roundf(x); }
static inline double fdim(double x, double y) { return x <= y ? 0.0 : x - y; }
static inline float fdimf(float x, float y) { return x <= y ? 0.0f : x - y; }
static inline double modf(double x, double* whole) {
    *whole = trunc(x);
    return copysign(isinf(x) ? 0.0 : x - *whole, x);
}
static inline float modff(float x, float* whole) {
    *whole = truncf(x);
    return copysignf(isinf(x) ? 0.0f : x - *whole, x);
}
static inline int __xfcflow_classify_double(double x) {
    return isnan(x) ? FP_NAN : isinf(x) ? FP_INFINITE : isnormal(x) ? FP_NORMAL : x == 0 ? FP_ZERO : FP_SUBNORMAL;
}
static inline int __xfcflow_classify_float(float x) {
    return isnan(x) ? FP_NAN : isinf(x) ? FP_INFINITE : isnormal(x) ? FP_NORMAL : x == 0 ? FP_ZERO : FP_SUBNORMAL;
}
double scalbn(double, int);
float scalbnf(float, int);
static inline double scalbln(double x, long n) { return scalbn(x, n); }
static inline float scalblnf(float x, long n) { return scalbnf(x, n); }
