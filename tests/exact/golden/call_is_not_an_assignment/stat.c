float a, y;

void datapath(void)
{
    sqrt(a);
}
