/* A sample in fixed point beside its level in floating point: the 32-bit integer path applies gain and offset, the
   floating-point path rescales the level from units of 2^-15 by moving its exponent. */
long sample, gain, offset;
float level;
long corrected;
float scaled;

void long_scale(void)
{
    corrected = sample * gain - offset;
    scaled = ldexp(level, -15);
}
