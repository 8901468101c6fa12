/* A number kept between two limits. */
float clamp(float x, float low, float high)
{
    if (x < low)
        return low;
    if (x > high)
        return high;
    return x;
}
