long n; float a, y;

void datapath(void)
{
    y = a + n;
}
