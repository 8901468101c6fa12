#include "coefficients.h"
float f(float a) {
    return a;
}
