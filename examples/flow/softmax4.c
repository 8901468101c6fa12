/* Softmax of four numbers. */
#include <math.h>

void softmax4(const float x[4], float y[4])
{
    float sum = 0;

    for (int i = 0; i < 4; i++) {
        y[i] = expf(x[i]);
        sum += y[i];
    }
    for (int i = 0; i < 4; i++)
        y[i] /= sum;
}
