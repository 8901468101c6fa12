/* One output of an 8-tap symmetric low-pass FIR filter. x0 is the newest sample; the delay line stands outside. The
   samples that share a coefficient are added first, so that four products do for eight taps. */
float x0, x1, x2, x3, x4, x5, x6, x7;
float y;

void fir(void)
{
    float outer, near_outer, near_inner, inner;

    outer = x0 + x7;
    near_outer = x1 + x6;
    near_inner = x2 + x5;
    inner = x3 + x4;
    y = (0.0078125 * outer + 0.0703125 * near_outer) + (0.171875 * near_inner + 0.25 * inner);
}
