/* Polynomial of degree 8 by Horner's rule, in double precision: exp(x) near 0. */
static const double coefficient[] = {
    1.0, 1.0, 0.5, 1.6666666666666666e-1, 4.1666666666666664e-2, 8.3333333333333332e-3, 1.3888888888888889e-3,
    1.9841269841269841e-4, 2.4801587301587302e-5,
};

double horner8(double x)
{
    double y = coefficient[8];

    for (int i = 7; i >= 0; i--)
        y = y * x + coefficient[i];
    return y;
}
