float a, b, y; double z;

void datapath(void)
{
    z = a;
    z = a;
    y = a * b;
}
