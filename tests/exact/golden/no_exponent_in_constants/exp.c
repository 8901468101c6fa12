float a, y;

void datapath(void)
{
    y = a * 1.5e3;
}
