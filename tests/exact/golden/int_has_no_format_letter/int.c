int a; float b, y;

void datapath(void)
{
    y = a + b;
}
