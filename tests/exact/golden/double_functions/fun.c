double a, b, p, q, r, s, t, u;

void datapath(void)
{
    p = sqrt(a);
    q = invsqr(b);
    r = inv(a);
    s = exp(b);
    t = log(fabs(a));
    u = -b;
}
