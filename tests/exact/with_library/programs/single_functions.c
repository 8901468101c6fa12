/* fp_exp, fp_inv, fp_fabs, fp_neg and fp_sqr. */
float x, y;
float power, reciprocal, magnitude, opposite, root;

void single_functions(void)
{
    power = exp(x);
    reciprocal = inv(y);
    magnitude = fabs(x);
    opposite = negate(y);
    root = sqrt(y);
}
