float a, b, t, y;

void datapath(void)
{
    t = a + b;
    t = a - b;
    y = t * b;
}
