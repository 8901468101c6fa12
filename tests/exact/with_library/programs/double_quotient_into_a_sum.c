/* xfc_divfp2x into an adder. */
double dividend, divisor, offset, result;

void double_quotient_into_a_sum(void)
{
    result = dividend / divisor + offset;
}
