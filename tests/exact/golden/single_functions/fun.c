float a, b, c, d, p, q, r, s, t, u;

void datapath(void)
{
    p = sqrt(a);
    q = invsqr(b);
    r = inv(c);
    s = exp(a);
    t = log(fabs(d));
    u = -b;
}
