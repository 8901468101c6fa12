/* Between a and b, as far as the weight says: a at 0, b at 1. Weights beyond are taken as 0 or 1. */
float mix(float a, float b, float weight)
{
    float w = weight < 0.0f ? 0.0f : weight > 1.0f ? 1.0f : weight;
    return a + w * (b - a);
}
