/* Mean and variance after a further sample, by Welford's method. The count of samples, this one included, is an integer. */
typedef struct { float mean, squares; } statistics;

statistics running_mean(statistics now, float sample, int count, float *variance)
{
    float n = count;
    float delta = sample - now.mean;
    statistics next;

    next.mean = now.mean + delta / n;
    next.squares = now.squares + delta * (sample - next.mean);
    *variance = next.squares / n;
    return next;
}
