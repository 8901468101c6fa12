float a, b, c, p, y, z;

void datapath(void)
{
    p = a * b;
    y = p * c;
    z = p + c;
}
