/* Acceleration of a body by three others, softened so that close ones do not divide by zero. */
#include <xfc.h>

typedef struct { float x, y, z; } vector;

vector nbody_force(vector at, const vector other[3], const float mass[3])
{
    vector sum = { 0, 0, 0 };

    for (int i = 0; i < 3; i++) {
        float dx = other[i].x - at.x, dy = other[i].y - at.y, dz = other[i].z - at.z;
        float inverse = invsqrf(dx * dx + dy * dy + dz * dz + 0.01f);
        float pull = mass[i] * (inverse * inverse * inverse);

        sum.x += pull * dx;
        sum.y += pull * dy;
        sum.z += pull * dz;
    }
    return sum;
}
