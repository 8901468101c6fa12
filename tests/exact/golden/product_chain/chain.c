float a, b, c, d, y, z;

void datapath(void)
{
    y = a * b * c / d;
    z = a * b;
}
