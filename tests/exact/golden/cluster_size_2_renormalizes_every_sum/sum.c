float a, b, c, y, z;

void datapath(void)
{
    y = a + b + c;
    z = (a + b) * c;
}
