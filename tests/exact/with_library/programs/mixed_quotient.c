/* castftoy: a float operand of a double quotient. */
float narrow;
double wide;
double quotient;

void mixed_quotient(void)
{
    quotient = narrow / wide;
}
