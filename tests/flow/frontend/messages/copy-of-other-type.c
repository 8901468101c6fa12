#include <string.h>
int f(float a) {
    int i;
    memcpy(&i, &a, sizeof i);
    return i;
}
