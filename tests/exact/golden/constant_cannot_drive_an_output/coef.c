float a, b, y, z;

void datapath(void)
{
    y = a * b;
    z = -2.5;
}
