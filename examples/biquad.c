/* One step of a biquad section in transposed direct form II, in single precision. The state registers s1 and s2 stand
   outside: the datapath gives their next values. */
float x;
float b0, b1, b2, a1, a2;
float s1, s2;
float y;
float s1_next, s2_next;

void biquad(void)
{
    float out;

    out = b0 * x + s1;
    y = out;
    s1_next = b1 * x - a1 * out + s2;
    s2_next = b2 * x - a2 * out;
}
