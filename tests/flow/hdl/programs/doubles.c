/* Sums of doubles and singles, and the conversions between the formats. */
double doubles(double a, double b, float c, int n, double *wide, float *narrow, int *whole)
{
    *wide = c;
    *narrow = a + b;
    *whole = a;
    return a - b + c + n;
}
