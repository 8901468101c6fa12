float sqrt, y;

void datapath(void)
{
    y = sqrt + 1.0;
}
