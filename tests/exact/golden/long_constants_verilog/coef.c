long a, y;

void datapath(void)
{
    y = a * 2.9 - -7;
}
