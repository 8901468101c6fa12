/* Distance of two points in space, and the same relative to a reference length: square root and division. */
float ax, ay, az;
float bx, by, bz;
float unit_length;
float span, relative_span;

void measure(void)
{
    float dx, dy, dz, d;

    dx = ax - bx;
    dy = ay - by;
    dz = az - bz;
    d = sqrt((dx * dx + dy * dy) + dz * dz);
    span = d;
    relative_span = d / unit_length;
}
