float x, y;

void datapath(void)
{
    y = y + x;
}
