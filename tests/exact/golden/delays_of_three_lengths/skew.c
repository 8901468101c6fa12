float a, b, x, y, z, w;

void datapath(void)
{
    x = sqrt(a) + b;
    y = inv(a) - b;
    z = exp(a) + b;
    w = b;
}
