float a, b, c, y, z;

void datapath(void)
{
    y = (a + 1.5) * b;
    z = (b - 2.25) + (c * -1.5 + a);
}
