/* Unit vector and length in double precision. */
#include <math.h>

double normalize3(const double v[3], double unit[3])
{
    double length = sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);

    for (int i = 0; i < 3; i++)
        unit[i] = v[i] / length;
    return length;
}
