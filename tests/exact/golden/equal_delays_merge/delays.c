double a, b, c; float d; double x, y, z;

void datapath(void)
{
    x = sqrt(a);
    y = b / c;
    z = d;
}
