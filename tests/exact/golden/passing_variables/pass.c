float a, b, s, t, y;

void datapath(void)
{
    s = a + b;
    t = s;
    y = t * a;
}
