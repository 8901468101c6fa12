float a, b; double c, y;

void datapath(void)
{
    y = (a + b) * c;
}
