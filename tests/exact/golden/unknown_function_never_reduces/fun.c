float a, y;

void datapath(void)
{
    y = sin(a);
}
