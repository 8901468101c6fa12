/* Fourier transform of 8 complex points, decimation in time, by the usual three loops. All indices and twiddle factors are
   known at compile time; the factors 1 and 0 cost nothing. */
#define N 8
#define LOG_N 3

typedef struct { float re, im; } point;

static const point twiddle[N / 2] = {
    { 1, 0 }, { 0.70710678f, -0.70710678f }, { 0, -1 }, { -0.70710678f, -0.70710678f },
};

void fft8(const point x[N], point y[N])
{
    for (int i = 0; i < N; i++) {
        int reversed = 0;

        for (int bit = 0; bit < LOG_N; bit++)
            reversed |= ((i >> bit) & 1) << (LOG_N - 1 - bit);
        y[reversed] = x[i];
    }
    for (int half = 1; half < N; half *= 2)
        for (int start = 0; start < N; start += 2 * half)
            for (int k = 0; k < half; k++) {
                const point w = twiddle[k * (N / 2 / half)];
                point *a = &y[start + k], *b = &y[start + k + half];
                point t = { w.re * b->re - w.im * b->im, w.re * b->im + w.im * b->re };

                b->re = a->re - t.re;
                b->im = a->im - t.im;
                a->re += t.re;
                a->im += t.im;
            }
}
