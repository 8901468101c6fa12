double a, b; float y;

void datapath(void)
{
    y = a - b;
}
