long y; float a, b;

void datapath(void)
{
    y = a + b;
}
