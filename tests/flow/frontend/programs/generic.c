// The functions of <tgmath.h> work in their operands' type.
#include <tgmath.h>

float root(float a) { return sqrt(fabs(a)); }
double wide_root(double a) { return sqrt(fabs(a)); }
double mixed_extremes(double a, float b) { return fmin(a, b) - 2 * fmax(b, a); }
float extremes(float a, float b) { return fmin(a, b) - 2 * fmax(b, a); }
float rounded(float a) { return floor(a) + 2 * ceil(a) + 4 * trunc(a) + 8 * round(a); }
double wide_rounded(double a) { return floor(a) + 2 * ceil(a) + 4 * trunc(a) + 8 * round(a); }
float scaled(float a) { return ldexp(a, 2) + scalbn(a, -3); }
float signs(float a, float b) { return copysign(a, b); }
double mixed_signs(float a, double b) { return copysign(a, b); }
double sizes(float a, double b) { return sizeof(sqrt(a)) + 10 * sizeof(sqrt(b)) + 100 * sizeof(fmax(a, b)) + 1000 * sizeof(fabs(3)); }
float squares(float a) { return pow(a, 2); }
