float a, b, c, d, t, y, z;

void datapath(void)
{
    t = a + b;
    y = t * c;
    z = t * d;
}
