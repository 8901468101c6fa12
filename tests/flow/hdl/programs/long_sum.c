/* A sum of twenty doubles, which is normalised on its way, beside one whose parts have very different depths. */
double long_sum(const double x[20], double *early)
{
    double s = x[0];
    int i;
    for (i = 1; i < 20; i++)
        s += x[i];
    *early = x[0] - x[19];
    return s;
}
