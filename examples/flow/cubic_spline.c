/* Cubic interpolation through four samples, Catmull and Rom's, in double precision. */
double cubic_spline(const double p[4], double t)
{
    double a = 0.5 * (3 * (p[1] - p[2]) + p[3] - p[0]);
    double b = p[0] - 2.5 * p[1] + 2 * p[2] - 0.5 * p[3];
    double c = 0.5 * (p[2] - p[0]);

    return ((a * t + b) * t + c) * t + p[1];
}
