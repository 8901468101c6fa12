float a, b, y;

void datapath(void)
{
    y = a * b;
}
