double a, b, c, y;

void datapath(void)
{
    y = invsqr(a) / b * c;
}
