float x, y;

void datapath(void)
{
    y = 2.5 * x;
}
