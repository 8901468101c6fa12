double a, y;

void datapath(void)
{
    y = ldexp(a, -4);
}
