/* Quotient of two complex numbers, (a.re + i a.im) / (b.re + i b.im), with one division. */
typedef struct { float re, im; } complex_t;

complex_t complex_divide(complex_t a, complex_t b)
{
    float scale = 1.0f / (b.re * b.re + b.im * b.im);
    complex_t q = { (a.re * b.re + a.im * b.im) * scale, (a.im * b.re - a.re * b.im) * scale };

    return q;
}
