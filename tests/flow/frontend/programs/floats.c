// Floating numbers and the functions of math.h.
#include <float.h>
#include <math.h>

float single_arithmetic(float a, float b) { return (a + b) * (a - b) / (b * b + 1.0f); }
double double_arithmetic(double a, double b) { return (a + b) * (a - b) / (b * b + 1.0); }
double mixed(float a, double b, int c) { return a * b + c; }
float narrowed(double a, double b) {
    float x = a;
    x += b;
    return x * (float)b;
}
float compound(float a, float b) {
    a += b;
    a *= 2;
    a -= 1.5f;
    a /= 4;
    a++;
    --a;
    return -a;
}
float absolute(float a, float b) { return fabsf(a) - fabsf(b) + copysignf(3.0f, a) + copysignf(b, a); }
double rounded(double a) { return floor(a) + 3 * ceil(a) + 5 * trunc(a) + 7 * round(a); }
float rounded_single(float a) { return floorf(a) + 3 * ceilf(a) + 5 * truncf(a) + 7 * roundf(a); }
float extremes(float a, float b) { return fminf(a, b) * 2 + fmaxf(a, 0.5f); }
double roots(double a, double b) { return sqrt(fabs(a)) + ldexp(b, 3) + scalbn(a, -2); }
float powers(float a) { return powf(a, 2) + a * a * a; }
int classified(float a) { return isnan(a) + 2 * (a == INFINITY) + 4 * (a > FLT_MAX) + 8 * (fabsf(a) < FLT_EPSILON); }
int compared(float a, double b) { return (a < b) + 2 * (a == b) + 4 * (a >= b) + 8 * (b > 1e300) + 16 * (a != 0); }
double constants(float a) { return a * 0.1f + (double)a * 0.1 + 1.0f / 3.0f; }
float negative_zero(float a) { return 1.0f / (a * 0.0f - 0.0f); }
double integers(int a, int b) { return a / 2 + a * 0.5 + (double)(a - b) + (float)b; }
float logic(float a, float b) { return (a && b) + (a || b) * 2 + !a * 4 + (a ? 8 : 16); }
float table(float a) {
    static const float c[5] = {1.0f, -0.5f, 0.25f, 2.0f};
    float y = 0.0f;
    for (int i = 4; i >= 0; i--) y = y * a + c[i];
    return y;
}
