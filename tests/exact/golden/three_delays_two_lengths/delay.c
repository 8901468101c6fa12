float a, b, x, y, z;

void datapath(void)
{
    x = sqrt(a);
    y = fabs(b);
    z = -b;
}
