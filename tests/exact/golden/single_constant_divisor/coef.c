float a, y;

void datapath(void)
{
    y = a / -3.0 + 0.1 * a;
}
