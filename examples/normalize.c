/* Unit vector in the direction of v, with one inverse square root instead of a root and three divisions. */
float vx, vy, vz;
float ux, uy, uz;

void normalize(void)
{
    float scale;

    scale = invsqr((vx * vx + vy * vy) + vz * vz);
    ux = vx * scale;
    uy = vy * scale;
    uz = vz * scale;
}
