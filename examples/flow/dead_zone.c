/* A joystick's curve: nothing near the middle, slope 1 outside. */
float dead_zone(float x)
{
    const float width = 0.125f;

    if (x > width)
        return x - width;
    else if (x < -width)
        return x + width;
    return 0;
}
