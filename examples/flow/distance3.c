/* Distance of two points in space. */
#include <math.h>

struct point { float x, y, z; };

float distance3(const struct point *a, const struct point *b)
{
    float dx = a->x - b->x, dy = a->y - b->y, dz = a->z - b->z;

    return sqrtf(dx * dx + dy * dy + dz * dz);
}
