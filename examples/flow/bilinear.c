/* Bilinear interpolation among four neighbours. */
static float mix(float a, float b, float t) { return a + t * (b - a); }

float bilinear(const float corner[2][2], float x, float y)
{
    return mix(mix(corner[0][0], corner[0][1], x), mix(corner[1][0], corner[1][1], x), y);
}
