// What the standard headers bring besides the known functions.
#include <assert.h>
#include <float.h>
#include <inttypes.h>
#include <iso646.h>
#include <limits.h>
#include <math.h>
#include <stdalign.h>
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

typedef struct {
    float taps[4];
    int count;
} filter;

// Nobody builds this: it is here to be passed over.
static inline void tell(float a) { printf("%f\n", a); }

int classes(float a, double b) {
    const float q = (a - 1) / (b > 0);
    const float none = (a - a) / (a - a);
    return isnan(q) + 2 * (isinf(q) != 0) + 4 * isfinite(q) + 8 * isnormal(q) + 16 * (!isnan(q) && signbit(q)) + 32 * isnan(none);
}
int classified(float a, double b) {
    const float q = (a - 1) / (b > 0);
    const double none = (b - b) / (b - b);
    const int of_q = fpclassify(q);
    const int of_b = fpclassify(b);
    return (of_q == FP_NAN) + 2 * (of_q == FP_INFINITE) + 4 * (of_q == FP_NORMAL) + 8 * (of_q == FP_ZERO) +
           16 * (of_b == FP_NORMAL) + 32 * (of_b == FP_ZERO) + 64 * (fpclassify(none) == FP_NAN) +
           128 * (fpclassify(a - a) == FP_ZERO);
}
float scaled(float a, double b) { return scalblnf(a, 3) + (float)scalbln(b, -2L); }
int limits(int a) {
    alignas(8) int x = a;
    return (x > INT8_C(5)) + FLT_DECIMAL_DIG + DBL_DECIMAL_DIG * 3 + (UINT32_C(4000000000) > 2147483647U) +
           (INT_LEAST16_MAX == 32767) + (UINT_LEAST8_MAX == 255) + (MB_LEN_MAX > 0) +
           (int)alignof(float);
}
int long_quotients(int a) { return (int)(ldiv(a, 7).quot * 10 + ldiv(a, 7).rem); }
int signs(double a) { return (signbit(a) != 0) + 2 * (signbit(a * 0) != 0) + 4 * (isinf(-1 / fabs(a * 0)) != 0); }
int relations(float a, double b) {
    const double q = (b - 1) / (a > 0) * 0;
    return isgreater(a, b) + 2 * isgreaterequal(a, b) + 4 * isless(a, b) + 8 * islessequal(a, b) +
           16 * islessgreater(a, b) + 32 * isunordered(q, a) + 64 * isless(q, b) + 128 * islessgreater(q, a);
}
int once(float a, int n) {
    int i = n;
    const float x[2] = {a, a - a};
    int k = 0;
    const int found = isnan(x[k++] / x[k++]) + isfinite(a + i++);
    return found + 10 * k + i;
}
// A host's long may have 64 bits: only what has room in 32 is alike.
int nearest(float a, double b) { return lroundf(fminf(fmaxf(a, -99), 99) * 8) - 3 * lround(fmin(fmax(b, -99), 99) * 8); }
float parts(float a, float b) {
    float units;
    const float rest = modff(a * 4, &units);
    return rest + 2 * units + fdimf(a, b) - 8 * fdimf(b, a);
}
double halves(double a, double b) {
    double units;
    const double rest = modf(b / 2, &units);
    return rest - units + fdim(a, b);
}
int sign_of_rest(float a) {
    float units;
    return signbit(modff(floorf(a), &units)) != 0;
}
int whole(int a, long b) { return abs(a) - labs(b) + __builtin_abs(a - 3); }
int quotients(int a) { return div(a, 7).quot * 10 + div(a, 7).rem; }
float builtins(float a, float b) { return __builtin_fabsf(a) + __builtin_sqrtf(__builtin_fabsf(b)) + __builtin_fmaxf(a, b); }
float copied(float a, float b) {
    filter one = {{a, b, 3, 4}, 4};
    filter other;
    memcpy(&other, &one, sizeof one);
    memset(other.taps, 0, 2 * sizeof other.taps[0]);
    memmove(one.taps + 1, one.taps, 3 * sizeof(float));
    return one.taps[0] + one.taps[1] * 2 + one.taps[2] * 4 + one.taps[3] + other.taps[0] + other.taps[3] * other.count;
}
float moved(float a, float b) {
    float x[4] = {a, b, a + b, a - b};
    memmove(x, x + 1, sizeof(float) * 3);
    float y[4];
    return ((float*)memcpy(y, x, sizeof(y)))[2] * 3 + y[1];
}
int words(int a, int b) { return (a > 0 and not(b < 3)) or (a xor b) == 7; }
float asserted(float a, int n) {
    static_assert(sizeof(int32_t) == 4, "four bytes");
    assert(n == n && "a whole number");
    for (int i = 0; i < 3; i++) {
        assert(i < 3);
        a += 1;
    }
    return a;
}
