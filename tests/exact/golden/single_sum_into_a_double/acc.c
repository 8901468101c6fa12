float a, b; double y;

void datapath(void)
{
    y = a + b;
}
