/* Single-precision sums: shared operands, constants, an accumulation, a variable assigned again and again. */
float sums(float a, float b, float c, const float x[4], float *twice, float *difference)
{
    float s = a + b - c;
    float t = 0;
    int i;
    for (i = 0; i < 4; i++)
        t += x[i] - 0.75f;
    *difference = a - b;
    *twice = s + s;
    return s + t;
}
