float a; double b, y;

void datapath(void)
{
    y = a + b;
}
