/* Functions between sums: each reads and delivers IEEE, so a sum is rounded in front of it. */
#include <math.h>
#include "xfc.h"

float functions(float a, float b, float *logarithm, float *reciprocal_root)
{
    *logarithm = logf(a);
    *reciprocal_root = invsqrf(a + b);
    return expf(a - b) + a;
}
