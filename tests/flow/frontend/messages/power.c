#include <math.h>
double f(double a, double b) {
    return pow(a, b);
}
