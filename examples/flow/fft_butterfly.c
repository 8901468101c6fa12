/* Radix-2 butterfly with structures: x = a + w b, y = a - w b. */
typedef struct { float re, im; } complex_t;

static complex_t multiply(complex_t a, complex_t b)
{
    complex_t p = { a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re };

    return p;
}

void fft_butterfly(complex_t a, complex_t b, complex_t w, complex_t *x, complex_t *y)
{
    complex_t t = multiply(w, b);

    x->re = a.re + t.re;
    x->im = a.im + t.im;
    y->re = a.re - t.re;
    y->im = a.im - t.im;
}
