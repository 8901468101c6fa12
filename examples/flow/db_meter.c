/* Level of eight samples in decibels of full scale. */
#include <math.h>

float db_meter(const float x[8])
{
    float power = 0;

    for (int i = 0; i < 8; i++)
        power += x[i] * x[i];
    return 10.0f * log10f(power * 0.125f + 1e-12f);
}
