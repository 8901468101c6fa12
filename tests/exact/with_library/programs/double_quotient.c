/* xfc_divfp2x to an IEEE output. */
double dividend, divisor, quotient;

void double_quotient(void)
{
    quotient = dividend / divisor;
}
