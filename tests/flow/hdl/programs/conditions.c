// Comparisons, selections, conditions and extremes of single precision; one-bit ports.
#include <math.h>
#include <stdbool.h>

float conditions(float a, float b, bool flag, bool* both, bool* either, float* chosen) {
    *both = flag && a < b;
    *either = !flag || a == b || !(a <= b);
    float y = a;
    if (a > b && b != 0.5f) {
        y = -b;
    } else if (!flag) {
        y = fminf(a, b) + roundf(a);
    }
    *chosen = copysignf(fmaxf(a, b), floorf(b)) - truncf(a) + ceilf(b);
    return y > 100.0f ? 100.0f : y;
}
