double a, b, y, z;

void datapath(void)
{
    y = (a + 1.5) * 0.1 + b;
    z = -0.25 - b / 3.0 + a;
}
