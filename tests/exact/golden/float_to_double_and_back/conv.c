float a, y; double b, z;

void datapath(void)
{
    z = a;
    y = b;
}
