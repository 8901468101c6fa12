/* castftoy: a float operand of a double product and of a double sum. */
float narrow_factor, narrow_term;
double wide_factor, wide_term;
double product, sum;

void mixed_operands(void)
{
    product = narrow_factor * wide_factor;
    sum = narrow_term + wide_term;
}
