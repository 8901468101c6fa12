double a, b, c, y, z;

void datapath(void)
{
    y = sqrt(a) / c;
    z = sqrt(b) + c;
}
