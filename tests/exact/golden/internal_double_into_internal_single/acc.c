double a, b; float c, s, y;

void datapath(void)
{
    s = c;
    y = (a + b) * c + s * c;
}
