float a, b, y, z; long n;

void datapath(void)
{
    y = ldexp(a, 3.7);
    z = ldexp(b, n);
}
