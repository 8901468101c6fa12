float a, b, y, z;

void datapath(void)
{
    y = a * b;
    y = ) a;
    z = a + b a;
}
