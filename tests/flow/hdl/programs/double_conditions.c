// Comparisons, selections, roundings and extremes of double precision.
#include <math.h>

double double_conditions(double a, double b, float c, double* rounded) {
    *rounded = floor(a) + ceil(b) * 2 + trunc(a) + round(b) + copysign(a, b);
    double y = a >= b ? a - b : b;
    if (c != c) {
        return c;
    }
    return fmax(y, c) + fmin(a, 3.0);
}
