/* One output of a low-pass FIR filter with 16 taps, written as the loop that it is. The samples stand newest first. */
#define TAPS 16

static const float taps[TAPS] = {
    -0.0018f, -0.0039f, -0.0021f, 0.0123f, 0.0435f, 0.0870f, 0.1297f, 0.1562f,
    0.1562f, 0.1297f, 0.0870f, 0.0435f, 0.0123f, -0.0021f, -0.0039f, -0.0018f,
};

float fir16(const float x[TAPS])
{
    float sum = 0;

    for (int i = 0; i < TAPS; i++)
        sum += taps[i] * x[i];
    return sum;
}
