float a; double b, c, y, z;

void datapath(void)
{
    y = a + b;
    z = a + c;
}
