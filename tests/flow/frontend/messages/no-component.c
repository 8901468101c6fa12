#include <math.h>
float f(float a) {
    return sinf(a);
}
