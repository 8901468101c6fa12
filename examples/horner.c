/* sin(x) near 0 as a polynomial of degree 7 by Horner's rule, in double precision:
   x - x^3/6 + x^5/120 - x^7/5040. */
double x;
double y;

void horner(void)
{
    double s, p;

    s = x * x;
    p = ((0.008333333333333333 - 0.0001984126984126984 * s) * s - 0.16666666666666666) * s + 1.0;
    y = p * x;
}
