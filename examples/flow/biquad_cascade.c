/* Two biquad sections behind each other, transposed direct form II. The state stands outside: the design gives the next
   one. */
struct section { float b0, b1, b2, a1, a2; };
struct state { float s1, s2; };

static const struct section sections[2] = {
    { 0.0675f, 0.1349f, 0.0675f, -1.1430f, 0.4128f },
    { 1.0000f, 2.0000f, 1.0000f, -1.3490f, 0.6680f },
};

float biquad_cascade(float x, const struct state now[2], struct state next[2])
{
    for (int i = 0; i < 2; i++) {
        const struct section c = sections[i];
        float y = c.b0 * x + now[i].s1;

        next[i].s1 = c.b1 * x - c.a1 * y + now[i].s2;
        next[i].s2 = c.b2 * x - c.a2 * y;
        x = y;
    }
    return x;
}
