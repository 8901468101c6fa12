double a, b; float f, s, y;

void datapath(void)
{
    s = a + b;
    y = s * f;
}
