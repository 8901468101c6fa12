float a, b, y;

void datapath(void)
{
    y = x * b;
}
