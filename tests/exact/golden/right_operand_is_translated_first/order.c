float a, b, c, d, y;

void datapath(void)
{
    y = (a - b) - (c - d);
}
