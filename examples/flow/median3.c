/* Median of three samples, which takes single spikes out of a signal. */
#include <math.h>

float median3(float a, float b, float c)
{
    return fmaxf(fminf(a, b), fminf(fmaxf(a, b), c));
}
