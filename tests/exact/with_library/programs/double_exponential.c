/* A Gaussian with its normalisation and sign kept apart: dp_exp, dp_inv, dp_fabs. */
double x, width;
double bell, sharpness, distance;

void double_exponential(void)
{
    bell = exp(x);
    sharpness = inv(width);
    distance = fabs(x);
}
