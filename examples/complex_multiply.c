/* Product of two complex numbers: p = a * b. */
float a_re, a_im;
float b_re, b_im;
float p_re, p_im;

void complex_multiply(void)
{
    p_re = a_re * b_re - a_im * b_im;
    p_im = a_re * b_im + a_im * b_re;
}
