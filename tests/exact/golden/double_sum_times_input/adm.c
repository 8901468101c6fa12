double a, b, c, y;

void datapath(void)
{
    y = (a + b) * c;
}
