float y;

void datapath(void)
{
    y = 2.0 * 3.0;
}
