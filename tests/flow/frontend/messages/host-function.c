#include <stdio.h>
float f(float a) {
    printf("%f", a);
    return a;
}
