/* Arctangent by a polynomial for |x| <= 1, the reciprocal beyond. */
#include <math.h>

float arctangent(float x)
{
    float size = fabsf(x);
    float t = size > 1 ? 1 / size : size;
    float s = t * t;
    float p = t * (0.9998660f + s * (-0.3302995f + s * (0.1801410f + s * (-0.0851330f + s * 0.0208351f))));

    return copysignf(size > 1 ? 1.57079637f - p : p, x);
}
