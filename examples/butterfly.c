/* Radix-2 butterfly of a decimation-in-time FFT: x = a + w * b and y = a - w * b, all complex. */
float a_re, a_im;
float b_re, b_im;
float w_re, w_im;
float x_re, x_im;
float y_re, y_im;

void butterfly(void)
{
    float t_re, t_im;

    t_re = b_re * w_re - b_im * w_im;
    t_im = b_re * w_im + b_im * w_re;
    x_re = a_re + t_re;
    x_im = a_im + t_im;
    y_re = a_re - t_re;
    y_im = a_im - t_im;
}
