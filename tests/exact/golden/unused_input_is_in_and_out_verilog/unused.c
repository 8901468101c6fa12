float a, b, spare, y;

void datapath(void)
{
    y = a * b;
}
