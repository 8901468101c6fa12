/* dp_sqr and dp_invsqr, of a product and of an operand. */
double x, y;
double root, inverse_root;

void double_roots(void)
{
    root = sqrt(x * y);
    inverse_root = invsqr(x);
}
