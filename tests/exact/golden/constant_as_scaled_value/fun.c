long n; float y;

void datapath(void)
{
    y = ldexp(2.0, n);
}
