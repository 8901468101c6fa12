/* Logistic function of a neuron with four inputs. */
#include <math.h>

float sigmoid(const float x[4], const float weight[4], float bias)
{
    float sum = bias;

    for (int i = 0; i < 4; i++)
        sum += x[i] * weight[i];
    return 1 / (1 + expf(-sum));
}
