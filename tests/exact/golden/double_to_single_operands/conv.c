float a, s, y; double b;

void datapath(void)
{
    s = b;
    y = s + a;
}
