/* A sensor's raw count through gain and offset in fixed point (Q16.16), then to volts as a float. */
float fixed_point_mix(int raw, int gain, int offset)
{
    int scaled = raw * gain + (offset << 4);

    return (float)scaled * (1.0f / 65536);
}
