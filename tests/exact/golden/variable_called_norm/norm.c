float a, b, norm, y;

void datapath(void)
{
    norm = a + b;
    y = norm * a;
}
