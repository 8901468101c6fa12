/* dp_log, dp_neg and dp_ldexp, of operands and of a sum. */
double x, y;
double nats, opposite, eighth;

void double_logarithm(void)
{
    nats = log(x);
    opposite = negate(y);
    eighth = ldexp(x + y, -3);
}
