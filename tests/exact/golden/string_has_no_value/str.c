float a, y;

void datapath(void)
{
    y = -"s";
}
